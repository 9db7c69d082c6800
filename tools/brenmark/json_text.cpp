#include "brenmark/json_text.h"

#include "brenmark/failure.h"
#include "brenmark/terminal.h"

namespace NBrenmark {

void printJson(const Json& value)
{
    printResult(value.dump(2, ' ', false, Json::error_handler_t::replace) + '\n');
    flushResult();
}

Json jsonFailure(const CFailure& failure)
{
    return {
        {"code", failure.code}, {"cause", failure.causeWord()}, {"text", failure.what()}, {"advice", failure.advice}};
}

Json jsonMessages(const Ledger& messages)
{
    const auto orNull = [](const std::string& text) { return text.empty() ? Json() : Json(text); };
    Json list = Json::array();
    for (const SLogRecord& message : messages) {
        const SDataPlace& place = message.place;
        list.push_back({{"level", message.level == eError ? "error" : "warning"},
                        {"title", message.title},
                        {"text", message.placedText()},
                        {"effect", effectName(message.effect)},
                        {"cause", causeName(message.cause)},
                        {"file", orNull(place.file)},
                        {"timestep", place.timestep ? Json(*place.timestep) : Json()},
                        {"block", orNull(place.block)},
                        {"object", orNull(place.object)},
                        {"count", message.count}});
    }
    return list;
}

} // namespace NBrenmark
