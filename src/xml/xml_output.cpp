// Texts and numbers of attributes, and the end of a document.
#include "xml/xml_output.h"

#include "core/cause.h"
#include "core/counted.h"
#include "core/log.h"
#include "core/shortened.h"

#include <QIODevice>

#include <charconv>
#include <cmath>

namespace NBrenmark {

CXmlOutput::CXmlOutput(QIODevice& device) : device(device), xml(&device)
{
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(1);
    xml.writeStartDocument();
}

bool isXmlCharacter(const QString& text, int at, int& length)
{
    const QChar c = text[at];
    length = 1;
    if (c.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate()) {
        length = 2;
        return true;
    }
    const ushort unit = c.unicode();
    if (unit < 0x20)
        return unit == '\t' || unit == '\n' || unit == '\r';
    return !c.isSurrogate() && unit < 0xFFFE;
}

void CXmlOutput::attribute(const QString& name, double value)
{
    if (std::isnan(value)) { // whose sign no reader takes
        put(name, QStringLiteral("nan"));
        return;
    }
    char digits[40];
    const auto end = std::to_chars(digits, digits + sizeof digits, value);
    put(name, QString::fromLatin1(digits, static_cast<int>(end.ptr - digits)));
}

void CXmlOutput::attribute(const QString& name, const QString& value)
{
    QString kept;
    kept.reserve(value.size());
    for (int at = 0, length = 1; at < value.size(); at += length) {
        if (isXmlCharacter(value, at, length))
            kept.append(value.midRef(at, length));
        else if (leftOut++ == 0)
            firstLeftOut = name;
    }
    put(name, kept);
}

void CXmlOutput::attribute(const QString& name, const std::string& value)
{
    const QString text = QString::fromStdString(value);
    if (text.toStdString() != value && leftOut++ == 0) // bytes that are no character became U+FFFD
        firstLeftOut = name;
    attribute(name, text);
}

void CXmlOutput::close()
{
    xml.writeEndDocument();
    if (xml.hasError())
        throw caused_error(eCauseTarget, device.errorString().toStdString());
    report(eNotCarried, NLogTitle::xmlExport,
           counted(leftOut, "character") + " left out: XML can't hold them; the first is in an attribute \"" +
               firstLeftOut.toStdString() + "\".",
           leftOut);
}

} // namespace NBrenmark
