// What every kind of form does with texts and lists, and the way from a form to a stream.
#include "analysis/entry_form.h"

#include "core/log.h"
#include "core/messages.h"
#include "visitors/settings_streams.h"

namespace NBrenmark {

void IEntryForm::text(const char* name, std::string& value)
{
    QString shown = QString::fromStdString(value);
    text(name, shown);
    if (isReading())
        value = shown.toStdString();
}

void IEntryForm::dropObsolete(std::initializer_list<QString*> texts)
{
    for (QString* text : texts) {
        if (!text->isEmpty())
            reportOnce(eUpgraded, NLogTitle::settings, messageText(eMessageSettingsObsolete).toStdString());
        text->clear();
    }
}

void IEntryForm::i32List(const char* name, std::set<qint32>& values)
{
    std::vector<qint32> list(values.begin(), values.end());
    i32List(name, list);
    if (isReading())
        values = std::set<qint32>(list.begin(), list.end());
}

bool IFormed::write(CVersionedStream& stream, IProgressController*)
{
    return NSettingsFamily::writeForm(stream, [this](IEntryForm& f) { form(f); });
}

bool IFormed::read(CVersionedStream& stream, IProgressController*)
{
    return NSettingsFamily::readForm(stream, [this](IEntryForm& f) { form(f); });
}

} // namespace NBrenmark
