#pragma once
// What one object loses in a document, for one message.

#include "core/log.h"
#include "core/shortened.h"

#include <QStringList>

namespace NBrenmark {

class CXmlLosses
{
public:
    void addIf(bool isLost, const char* what)
    {
        if (isLost)
            all.append(QString::fromLatin1(what));
    }
    void report(const char* noun, const std::string& name) const
    {
        NBrenmark::report(eNotCarried, NLogTitle::xmlExport,
                          std::string("Of ") + noun + (name.empty() ? "" : " \"" + shortened(name) + '"') +
                              " no document holds: " + all.join(", ").toStdString() + '.',
                          static_cast<quint64>(all.size()), shortened(name));
    }

private:
    QStringList all;
};

} // namespace NBrenmark
