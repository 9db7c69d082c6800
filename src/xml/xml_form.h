#pragma once
// How a class names its attributes once, for both directions: the same form runs with either of these. The order is
// that of the document.

#include "core/xml_io_options.h"
#include "xml/xml_attributes.h"
#include "xml/xml_output.h"

namespace NBrenmark {

/// The attributes of an element that was read.
class CXmlFormReader
{
public:
    explicit CXmlFormReader(const CXmlAttributes& attributes) : from(attributes) {}

    void attribute(const QString& name, double& value) { value = from.number(name); }
    void attribute(const QString& name, qint32& value) { value = from.integer(name); }
    void attribute(const QString& name, quint32& value) { value = from.count(name); }
    void attribute(const QString& name, QString& value) { value = from.text(name); }
    void attribute(const QString& name, std::string& value) { value = from.text(name).toStdString(); }
    void flag(const QString& name, bool& value) { value = from.flag(name); }
    void word(const QString& name, bool& value, const char* whenTrue, const char* /*whenFalse*/)
    {
        value = from.text(name) == QLatin1String(whenTrue);
    }
    template <class TVector>
    void xyz(const QString& prefix, TVector& vector)
    {
        attribute(prefix + 'x', vector.x);
        attribute(prefix + 'y', vector.y);
        attribute(prefix + 'z', vector.z);
    }

private:
    const CXmlAttributes& from;
};

using CXmlFormWriter = CXmlOutput;

} // namespace NBrenmark
