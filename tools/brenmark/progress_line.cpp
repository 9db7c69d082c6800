#include "brenmark/progress_line.h"

#include "brenmark/json_text.h"
#include "brenmark/units_text.h"

#include <algorithm>
#include <array>

namespace NBrenmark {

static constexpr int widestBar = 40; // cells; a wider one shows no more

static double shareDone(const SProgressState& state)
{
    return state.bytesTotal > 0.0 ? std::clamp(state.bytesDone / state.bytesTotal, 0.0, 1.0) : 0.0;
}

static std::string percentText(const SProgressState& state)
{
    return std::to_string(static_cast<int>(100.0 * shareDone(state))) + " %";
}

static std::string leftText(const SProgressState& state)
{
    return state.secondsLeft && state.finished < state.timesteps ? ", " + durationText(*state.secondsLeft) + " left"
                                                                 : std::string();
}

static std::string rateText(const SProgressState& state)
{
    return (state.bytesPerSecond > 0.0 ? ", " + sizeText(state.bytesPerSecond) + "/s" : std::string()) +
           leftText(state);
}

std::string progressBar(const SProgressState& state, int columns, bool hasColour)
{
    const std::string number = std::to_string(std::min(state.finished + 1, state.timesteps));
    const std::string all = std::to_string(state.timesteps);
    struct SForm
    {
        std::string text;
        int leastCells;
    };
    // From the fullest to the shortest, of which the first that fits is taken.
    const std::array<SForm, 5> forms{{
        {' ' + state.work + " timestep " + number + " of " + all + rateText(state), 10},
        {" timestep " + number + " of " + all + leftText(state), 10},
        {' ' + number + '/' + all + leftText(state), 6},
        {' ' + percentText(state) + leftText(state), 6},
        {' ' + percentText(state), 4},
    }};
    const auto cellsBeside = [columns](const SForm& form) { return columns - 2 - static_cast<int>(form.text.size()); };
    const auto form =
        std::find_if(forms.begin(), forms.end(), [&](const SForm& one) { return cellsBeside(one) >= one.leastCells; });
    if (form == forms.end())
        return percentText(state).substr(0, static_cast<std::size_t>(std::max(columns, 0)));
    const int cells = std::min(widestBar, cellsBeside(*form));
    const int filled = static_cast<int>(cells * shareDone(state));
    return '[' + std::string(hasColour ? "\x1b[32m" : "") + std::string(static_cast<std::size_t>(filled), '#') +
           (hasColour ? "\x1b[0m" : "") + std::string(static_cast<std::size_t>(cells - filled), '.') + ']' + form->text;
}

std::string progressLine(const SProgressState& state, bool isDone)
{
    const quint32 number = isDone ? state.finished : std::min(state.finished + 1, state.timesteps);
    return state.work + " timestep " + std::to_string(number) + " of " + std::to_string(state.timesteps) +
           (isDone ? " done" : ", " + percentText(state) + " of all") + rateText(state);
}

std::string progressObject(const SProgressState& state)
{
    const Json progress{{"work", state.work},
                        {"finishedTimesteps", state.finished},
                        {"timesteps", state.timesteps},
                        {"bytesDone", static_cast<quint64>(state.bytesDone)},
                        {"bytesTotal", static_cast<quint64>(state.bytesTotal)},
                        {"secondsLeft", state.secondsLeft ? Json(*state.secondsLeft) : Json()}};
    return Json{{"progress", progress}}.dump();
}

} // namespace NBrenmark
