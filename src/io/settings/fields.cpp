// The block of fields. A field that is damaged ends the block, for fields have no length of their own; those ahead of
// it stay.
#include "analysis/field_manager.h"
#include "analysis/progress_step.h"
#include "core/log.h"
#include "core/versioned_stream.h"
#include "visitors/settings_streams.h"

#include <QIODevice>

#include <algorithm>
#include <stdexcept>

namespace NBrenmark {

using namespace NField;

/// Name, id, plane and two counts: no field is smaller.
static constexpr qint64 leastFieldBytes = 5 * 4;

static void reportUnwritten(const std::string& name, const std::string& lack)
{
    report(eLost, NLogTitle::settings, "Field \"" + name + "\" isn't written: " + lack + ".", 1, name);
}

bool NSettingsFamily::write(CVersionedStream& stream, CFieldManager& fields, IProgressController* progress)
{
    const auto valid = std::count_if(fields.fields().begin(), fields.fields().end(),
                                     [](const auto& entry) { return entry.second->isValid(); });
    CProgressStep step(progress, static_cast<int>(valid), QStringLiteral("Writing Field Data"));
    stream << qint32(valid); // the others are reported, and left out
    for (const auto& [name, field] : fields.fields()) {
        if (const std::string lack = field->invalidity(); !lack.empty()) {
            reportUnwritten(name, lack);
            continue;
        }
        if (step.isCancelled() || !field->write(stream, progress))
            return false;
        step.tick();
    }
    fields.setModified(false);
    return stream.status() == QDataStream::Ok;
}

/// Moves to the end of the block, as far as it is known, and reports what is left out with a field.
static void leaveRest(CVersionedStream& stream, const std::string& name, qint64 begin, quint64 fields,
                      const std::string& cause)
{
    // Where no length of the block is known, only as far as was read.
    const qint64 end = stream.limit() >= 0 ? stream.limit() : stream.device()->pos();
    report(eLost, NLogTitle::settings,
           "Fields: " + cause + " It is left out, and what follows it in the block as well (" +
               std::to_string(end - begin) + " bytes).",
           fields, name);
    stream.resetStatus(); // the blocks after this one are to be read
    stream.device()->seek(end);
}

static bool readFields(CVersionedStream& stream, CFieldManager& fields, IProgressController* progress, qint32 count)
{
    CProgressStep step(progress, count, QStringLiteral("Reading Field Data"));
    for (qint32 i = 0; i < count; ++i) {
        if (step.isCancelled())
            return false;
        auto field = std::make_unique<CFieldData>();
        const qint64 begin = stream.device()->pos();
        std::string damage;
        bool isValid = false;
        try {
            isValid = field->read(stream, progress);
        }
        catch (const std::exception& error) {
            // Where the block ends is known: the fields ahead of this one stay.
            if (i == 0 || stream.limit() < 0 || !meansDamage(error))
                throw;
            damage = error.what();
        }
        if (step.isCancelled())
            return false;
        std::string refusal;
        if (!damage.empty())
            refusal = "can't be read (" + damage + ")";
        else if (!isValid)
            refusal = "is none: " + field->invalidity();
        else if (!fields.addField(field))
            refusal = "has the name or the id (" + std::to_string(field->id) + ") of an earlier one";
        if (!refusal.empty()) {
            leaveRest(stream, field->name, begin, static_cast<quint64>(count - i),
                      "field " + std::to_string(i + 1) + " of " + std::to_string(count) + " (\"" + field->name +
                          "\") " + refusal + ".");
            break; // where the next field begins isn't known
        }
        step.tick();
    }
    return true;
}

bool NSettingsFamily::read(CVersionedStream& stream, CFieldManager& fields, IProgressController* progress)
{
    fields.clear(false);
    qint32 count = 0;
    stream >> count;
    const qint64 left = stream.bytesLeft();
    if (stream.status() != QDataStream::Ok || count < 0 || count > left / leastFieldBytes)
        throw std::length_error(std::to_string(count) + " fields announced, " + std::to_string(left) + " bytes follow");
    const bool isWhole = readFields(stream, fields, progress, count);
    fields.rebuildIdMap();
    fields.setModified(false);
    return isWhole;
}

} // namespace NBrenmark
