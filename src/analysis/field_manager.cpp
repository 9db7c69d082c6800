// Reads and writes the block of fields. A field that is damaged ends the block, for fields have no length of their
// own; those ahead of it stay.
#include "analysis/field_manager.h"

#include "analysis/progress_step.h"
#include "core/log.h"
#include "core/versioned_stream.h"

#include <QIODevice>

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

namespace NBrenmark::NField {

/// Name, id, plane and two counts: no field is smaller.
static constexpr qint64 leastFieldBytes = 5 * 4;

/// As noId, a field asks for a number by it.
static constexpr qint32 anyId = -2;

CFieldManager::CFieldManager() = default;
CFieldManager::~CFieldManager() = default;

// ---------------------------------------------------------------- the fields

bool CFieldManager::addField(std::unique_ptr<CFieldData>& field)
{
    if (field == nullptr || byName.count(field->name) > 0)
        return false;
    const bool isNumbered = field->id != CFieldData::noId && field->id != anyId;
    const qint32 id = isNumbered ? field->id : nextId;
    if (byId.count(id) > 0)
        return false;
    field->id = id;
    if (id >= nextId && id < std::numeric_limits<qint32>::max())
        nextId = id + 1;
    const std::string name = field->name;
    byId.emplace(id, field.get());
    byName.emplace(name, std::move(field));
    setModified(true);
    Q_EMIT fieldAdded(name);
    return true;
}

bool CFieldManager::deleteField(const std::string& name)
{
    const auto found = byName.find(name);
    if (found == byName.end())
        return false;
    const auto entry = byName.extract(found); // goes last: the name may be the field's own
    byId.erase(entry.mapped()->id);
    setModified(true);
    Q_EMIT fieldDeleted(entry.key());
    return true;
}

bool CFieldManager::renameField(const std::string& oldName, const std::string& newName)
{
    const auto found = byName.find(oldName);
    if (found == byName.end() || newName.empty() || byName.count(newName) > 0)
        return false;
    auto entry = byName.extract(found);
    const std::string before = entry.key(); // oldName may be the field's own
    entry.key() = newName;
    entry.mapped()->name = newName;
    byName.insert(std::move(entry));
    setModified(true);
    Q_EMIT fieldRenamed(before, newName);
    return true;
}

bool CFieldManager::rebuildIdMap()
{
    byId.clear();
    bool areDifferent = true;
    for (const auto& [name, field] : byName)
        areDifferent = byId.insert_or_assign(field->id, field.get()).second && areDifferent;
    return areDifferent;
}

CFieldData* CFieldManager::getField(qint32 id) const
{
    const auto found = byId.find(id);
    return found == byId.end() ? nullptr : found->second;
}

CFieldData* CFieldManager::getField(const std::string& name) const
{
    const auto found = byName.find(name);
    return found == byName.end() ? nullptr : found->second.get();
}

void CFieldManager::clear(bool notify)
{
    byId.clear();
    byName.clear();
    nextId = 0;
    setModified(notify);
    Q_EMIT cleared();
}

// ---------------------------------------------------------------- the block

bool CFieldManager::write(CVersionedStream& stream, IProgressController* progress)
{
    const auto valid =
        std::count_if(byName.begin(), byName.end(), [](const auto& entry) { return entry.second->isValid(); });
    CProgressStep step(progress, static_cast<int>(valid), QStringLiteral("Writing Field Data"));
    stream << qint32(valid);
    for (const auto& [name, field] : byName) {
        if (const std::string lack = field->invalidity(); !lack.empty()) {
            report(eLost, NLogTitle::settings, "Field \"" + name + "\" isn't written: " + lack + ".", 1, name);
            continue;
        }
        if (step.isCancelled() || !field->write(stream, progress))
            return false;
        step.tick();
    }
    setModified(false);
    return stream.status() == QDataStream::Ok;
}

/// Moves to the end of the block, as far as it is known, and reports what is left out with a field.
static void leaveRest(CVersionedStream& stream, const std::string& name, qint64 begin, quint64 fields,
                      const std::string& cause)
{
    const qint64 end = stream.limit() >= 0 ? stream.limit() : stream.device()->pos();
    report(eLost, NLogTitle::settings,
           "Fields: " + cause + " It is left out, and what follows it in the block as well (" +
               std::to_string(end - begin) + " bytes).",
           fields, name);
    stream.resetStatus();
    stream.device()->seek(end);
}

bool CFieldManager::readFields(CVersionedStream& stream, IProgressController* progress, qint32 count)
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
        else if (!addField(field))
            refusal = "has the name or the id (" + std::to_string(field->id) + ") of an earlier one";
        if (!refusal.empty()) {
            leaveRest(stream, field->name, begin, static_cast<quint64>(count - i),
                      "field " + std::to_string(i + 1) + " of " + std::to_string(count) + " (\"" + field->name +
                          "\") " + refusal + ".");
            break;
        }
        step.tick();
    }
    return true;
}

bool CFieldManager::read(CVersionedStream& stream, IProgressController* progress)
{
    clear(false);
    qint32 count = 0;
    stream >> count;
    const qint64 left = stream.bytesLeft();
    if (stream.status() != QDataStream::Ok || count < 0 || count > left / leastFieldBytes)
        throw std::length_error(std::to_string(count) + " fields announced, " + std::to_string(left) + " bytes follow");
    const bool isWhole = readFields(stream, progress, count);
    rebuildIdMap();
    setModified(false);
    return isWhole;
}

} // namespace NBrenmark::NField
