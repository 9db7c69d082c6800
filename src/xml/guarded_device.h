#pragma once
// Hands a document on to the parser, which takes a token as a whole and compares each of its attributes with all
// others: a token without an end must not take all memory, nor one of a million attributes all time.

#include <QIODevice>

namespace NBrenmark {

class CGuardedDevice : public QIODevice
{
public:
    /// \param source  open for reading; not owned
    explicit CGuardedDevice(QIODevice& source) : source(source) { open(QIODevice::ReadOnly | QIODevice::Unbuffered); }

    bool isSequential() const override { return true; }
    /// A token is whole: what follows belongs to others.
    void tokenDone() { tokenBytes = tokenQuotes = 0; }
    /// Whether the read ended for a token that is too long.
    bool isRefused() const { return refused; }
    /// Whether the source couldn't be read.
    bool isBroken() const { return broken; }

protected:
    qint64 readData(char* data, qint64 most) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QIODevice& source;
    qint64 tokenBytes = 0;
    qint64 tokenQuotes = 0;
    bool refused = false;
    bool broken = false;
};

} // namespace NBrenmark
