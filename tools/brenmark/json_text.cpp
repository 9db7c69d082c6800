#include "brenmark/json_text.h"
#include "brenmark/terminal.h"

namespace NBrenmark {

void printJson(const Json& value)
{
    printResult(value.dump(2, ' ', false, Json::error_handler_t::replace) + '\n');
    flushResult();
}

Json jsonMessages(const std::vector<SLogMessage>& messages)
{
    Json list = Json::array();
    for (const auto& [level, title, text] : messages)
        list.push_back({{"level", level == eError ? "error" : "warning"}, {"title", title}, {"text", text}});
    return list;
}

} // namespace NBrenmark
