#pragma once
// The record at the head of both roots: the version, and which build wrote it.

#include <QString>

namespace NBrenmark {

class CInForm;

struct SDemStamp
{
    quint32 buildRevision = 0;
    QString buildBranch;
};

/// Reads it, and has the stream go by its version.
void readStamp(CInForm& f, SDemStamp& stamp);

} // namespace NBrenmark
