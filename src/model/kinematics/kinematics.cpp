// The motions of a group in a list, and the words of their kinds.
#include "model/kinematics/kinematics.h"

#include "model/kinematics/conveyor_rotation.h"
#include "model/kinematics/conveyor_translation.h"
#include "model/kinematics/sinusoidal_rotation.h"
#include "model/kinematics/sinusoidal_translation.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>
#include <cmath>

namespace NBrenmark {

void CKinematics::read(IFileVisitorReader& v) { v.readKinematics(*this); }

void CKinematics::write(IFileVisitorWriter& v) const { v.writeKinematics(*this); }

void CKinematics::add(std::unique_ptr<CTimeDepAction> action)
{
    if (action == nullptr)
        return;
    earliestStart = std::min(earliestStart, action->startTime);
    latestEnd = action->loop ? std::numeric_limits<double>::max() : std::max(latestEnd, action->endTime);
    actions.push_back(std::move(action));
}

template <class TActions>
static auto position(TActions& actions, const QString& name)
{
    return std::find_if(actions.begin(), actions.end(), [&](const auto& action) { return action->name == name; });
}

CTimeDepAction* CKinematics::find(const QString& name) const
{
    const auto found = position(actions, name);
    return found != actions.end() ? found->get() : nullptr;
}

void CKinematics::remove(const QString& name)
{
    const auto found = position(actions, name);
    if (found == actions.end())
        return;
    actions.erase(found);
    recomputeTimes();
}

void CKinematics::recomputeTimes()
{
    earliestStart = noStart;
    latestEnd = noEnd;
    for (const std::unique_ptr<CTimeDepAction>& action : actions) {
        earliestStart = std::min(earliestStart, action->startTime);
        latestEnd = std::max(latestEnd, action->lastEnd());
    }
}

void CKinematics::sortByStartTime()
{
    // NaN compares with nothing: without a place of its own it would break the order that sorting relies on.
    std::stable_sort(actions.begin(), actions.end(), [](const auto& a, const auto& b) {
        if (std::isnan(a->startTime) || std::isnan(b->startTime))
            return !std::isnan(a->startTime) && std::isnan(b->startTime);
        return a->startTime < b->startTime;
    });
}

void CKinematics::clear()
{
    actions.clear();
    earliestStart = noStart;
    latestEnd = noEnd;
    legacyCount = 0;
    legacyPairs.clear();
}

template <class TMotion>
static std::unique_ptr<CTimeDepAction> made()
{
    return std::make_unique<TMotion>();
}

std::unique_ptr<CTimeDepAction> createMotion(const QString& word)
{
    static constexpr struct
    {
        const char* word;
        std::unique_ptr<CTimeDepAction> (*make)();
    } kinds[] = {
        {CLinearTranslation::word, made<CLinearTranslation>},
        {CSinusoidalTranslation::word, made<CSinusoidalTranslation>},
        {CConveyorTranslation::word, made<CConveyorTranslation>},
        {CLinearRotation::word, made<CLinearRotation>},
        {CSinusoidalRotation::word, made<CSinusoidalRotation>},
        {CConveyorRotation::word, made<CConveyorRotation>},
    };
    for (const auto& kind : kinds)
        if (word == QLatin1String(kind.word))
            return kind.make();
    return nullptr;
}

} // namespace NBrenmark
