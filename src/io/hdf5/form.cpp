// What of the forms isn't a template: groups as places in the log, and the look at what failed in the file.
#include "io/hdf5/form.h"

#include "io/hdf5/checked_file_driver.h"

namespace NBrenmark {

SDataPlace placeInGroup(const std::string& name)
{
    SDataPlace place = placeAtWork();
    const bool isBlock = name.size() > 1 && name.back() == '/' && name != "TimestepData/" && name != "CreatorData/";
    if (!isBlock || (!place.block.empty() && place.block != creatorBlock))
        return place;
    std::string words;
    for (const char c : name.substr(0, name.size() - 1)) {
        const bool isUpper = c >= 'A' && c <= 'Z';
        if (isUpper && !words.empty())
            words += ' ';
        words += isUpper ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return place.inBlock(words);
}

void CHdf5FormWriter::throwIfFailed()
{
    if (!measures)
        NBrenmark::throwIfFailed(visitor.file);
}

} // namespace NBrenmark
