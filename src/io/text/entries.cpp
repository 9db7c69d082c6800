// The text of selections and fields: the forms that read and write them, run with a form that writes lines.
#include "analysis/entry_form.h"
#include "analysis/field_manager.h"
#include "analysis/selection_map.h"
#include "io/text/settings.h"
#include "io/text/text_writer.h"
#include "model/geometry_groups.h"

#include <QBuffer>
#include <QDataStream>

namespace NBrenmark {

static void bytesOf(CTextOutput& out, const char* name, const QByteArray& value)
{
    QBuffer buffer;
    buffer.setData(value);
    buffer.open(QIODevice::ReadOnly);
    out.bytes(name, buffer);
}

namespace {

class CTextEntryForm : public IEntryForm
{
public:
    explicit CTextEntryForm(CTextOutput& out) : out(out) {}

    bool isReading() const override { return false; }
    void group(const QString& name, const std::function<void()>& body) override
    {
        out.group(NText::segment(name), body);
    }
    void f64(const char* name, double& value) override { out.value(name, value); }
    void i32(const char* name, qint32& value) override { out.value(name, value); }
    void flag8(const char* name, bool& value) override { out.value(name, value); }
    void strictFlag8(const char* name, bool& value) override { out.value(name, value); }
    using IEntryForm::text;
    void text(const char* name, QString& value) override { out.value(name, value); }
    void point(const char* name, C3DPoint& value) override { out.value(name, value); }
    void rgb(const char* name, QColor& value) override
    {
        out.value(name, C3DVector(value.red(), value.green(), value.blue()));
    }
    /// Its kind of colour, then alpha and four parts of 16 bits.
    void colour(const char* name, QColor& value) override
    {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::ReadWrite);
        stream << value;
        stream.device()->seek(0);
        qint8 kind = 0;
        stream >> kind;
        std::vector<qint32> parts{kind};
        for (int i = 0; i < 5; ++i) {
            quint16 part = 0;
            stream >> part;
            parts.push_back(part);
        }
        out.array(name, parts);
    }
    using IEntryForm::i32List;
    void i32List(const char* name, std::vector<qint32>& values) override { out.array(name, values); }
    void unlaid(const char* name, QByteArray& value, const std::function<qint64(const QByteArray&)>&) override
    {
        if (!value.isEmpty())
            bytesOf(out, name, value);
    }
    void vectors(const char* name, std::vector<NField::CNdData>& values) override
    {
        std::vector<quint32> sizes;
        std::vector<double> components;
        for (const NField::CNdData& vector : values) {
            sizes.push_back(vector.size());
            for (quint32 i = 0; i < vector.size(); ++i)
                components.push_back(vector[i]);
        }
        out.group(name, [&] {
            out.array("sizes", sizes);
            out.array("components", components);
        });
    }
    void geometry(const char* name, std::shared_ptr<GeometryGroups>& groups) override
    {
        out.group(name, [&] {
            out.value("isThere", groups != nullptr);
            if (groups != nullptr) {
                CTextWriter writer(out.target(), out.where(), out.hasFullArrays());
                groups->write(writer);
            }
        });
    }
    quint32 count(const char* name, quint32 present, qint64) override
    {
        out.value(name, present);
        return present;
    }

private:
    CTextOutput& out;
};

} // namespace

void writeSelections(CTextOutput& out, const NSelection::CSelectionMap& selections)
{
    out.group("selections", [&] {
        CTextEntryForm form(out);
        for (const auto& [name, selection] : selections.selections()) {
            if (selection->isSubSelection())
                continue;
            form.group(QString::fromStdString(name), [&, &selection = *selection] {
                out.value("class", selection.typeId());
                selection.form(form);
            });
        }
    });
    const std::vector<NSelection::SCarriedSelection>& carried = selections.carried().selections();
    if (carried.empty())
        return;
    out.group("selectionsCarried", [&] {
        for (size_t i = 0; i < carried.size(); ++i)
            out.group(std::to_string(i), [&, &one = carried[i]] {
                out.value("class", one.typeId);
                out.value("name", one.name);
                out.value("version", versionText(one.version));
                out.value("edition", one.edition);
                bytesOf(out, "bytes", one.bytes);
            });
    });
}

void writeFields(CTextOutput& out, const NField::CFieldManager& fields)
{
    out.group("fields", [&] {
        CTextEntryForm form(out);
        for (const auto& [name, field] : fields.fields())
            if (field->isValid())
                form.group(QString::fromStdString(name), [&, &field = *field] { field.form(form); });
    });
}

} // namespace NBrenmark
