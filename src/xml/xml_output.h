#pragma once
// A document as it is written: element by element, straight to its device.

#include <QString>
#include <QXmlStreamWriter>

#include <string>

class QIODevice;

namespace NBrenmark {

/// Whether a document can hold a character or a surrogate pair that begins at a place of a text.
/// \param length  of it in units of the text, 1 or 2
bool isXmlCharacter(const QString& text, int at, int& length);

class CXmlOutput
{
public:
    /// Begins the document.
    /// \param device  open for writing; not owned
    explicit CXmlOutput(QIODevice& device);

    /// Runs body with an element open: first its attributes, then its children.
    template <class TBody>
    void element(const QString& tag, TBody&& body)
    {
        xml.writeStartElement(tag);
        body();
        xml.writeEndElement();
    }

    // Attributes of the open element. Numbers have as few digits as bring back the same bits.

    void attribute(const QString& name, double value);
    void attribute(const QString& name, qint32 value) { put(name, QString::number(value)); }
    void attribute(const QString& name, quint32 value) { put(name, QString::number(value)); }
    /// What no document can hold is left out, and counted.
    void attribute(const QString& name, const QString& value);
    void attribute(const QString& name, const std::string& value);
    void attribute(const QString& name, const char* value) { put(name, QString::fromLatin1(value)); }
    void attribute(const QString& name, bool value) = delete; // a flag or a word
    void flag(const QString& name, bool value) { put(name, QString::number(value ? 1 : 0)); }
    void word(const QString& name, bool value, const char* whenTrue, const char* whenFalse)
    {
        attribute(name, value ? whenTrue : whenFalse);
    }
    /// Three attributes: the prefix and x, y and z.
    template <class TVector>
    void xyz(const QString& prefix, const TVector& vector)
    {
        attribute(prefix + 'x', vector.x);
        attribute(prefix + 'y', vector.y);
        attribute(prefix + 'z', vector.z);
    }
    /// With six significant digits: the coordinates of a mesh.
    template <class TVector>
    void shortXyz(const TVector& vector)
    {
        put("x", QString::number(vector.x, 'g', 6));
        put("y", QString::number(vector.y, 'g', 6));
        put("z", QString::number(vector.z, 'g', 6));
    }

    /// Ends the document and reports the characters that were left out.
    /// \throws caused_error  the device took less than all of it
    void close();

private:
    void put(const QString& name, const QString& value) { xml.writeAttribute(name, value); }

    QIODevice& device;
    QXmlStreamWriter xml;
    quint64 leftOut = 0;  ///< characters
    QString firstLeftOut; ///< the attribute that they were in first
};

} // namespace NBrenmark
