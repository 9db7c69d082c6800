// Keys from and to text: elements with colons between them.
#include "config/key_path.h"

#include <algorithm>
#include <utility>

namespace NBrenmark::NConfig {

CKeyPath::CKeyPath(const CKeyPath& base, const CKeyPath& relative) : path(base.path)
{
    path.insert(path.end(), relative.path.begin(), relative.path.end());
}

CKeyPath::CKeyPath(std::vector<std::string> elements) : path(std::move(elements)) {}

CKeyPath CKeyPath::fromString(const std::string& text)
{
    CKeyPath result;
    size_t start = 0;
    while (start < text.size()) {
        const size_t colon = std::min(text.find(':', start), text.size());
        if (colon > start)
            result.path.push_back(text.substr(start, colon - start));
        start = colon + 1;
    }
    return result;
}

std::string CKeyPath::toString() const
{
    std::string text;
    for (const std::string& element : path) {
        if (&element != &path.front())
            text += ':';
        text += element;
    }
    return text;
}

CKeyPath CKeyPath::child(const std::string& element) const
{
    CKeyPath result(*this);
    result.path.push_back(element);
    return result;
}

bool operator<(const CKeyPath& a, const CKeyPath& b)
{
    return a.elements() < b.elements(); // std::string compares its bytes as unsigned ones
}

bool operator==(const CKeyPath& a, const CKeyPath& b) { return a.elements() == b.elements(); }

static const char* messageOf(EConfigError code)
{
    switch (code) {
    case eKeyPathNotValid: return "Key path not valid";
    case eValueOfDifferentType: return "Value is of different type";
    case eValueInInvalidFormat: return "Value is in invalid format";
    }
    return "";
}

CConfigException::CConfigException(EConfigError code, CKeyPath keyPath, std::string details)
    : error(code), key(std::move(keyPath)), detailText(std::move(details))
{
    text = std::string(messageOf(error)) + " (Key: " + key.toString();
    if (!detailText.empty())
        text += " Details: " + detailText;
    text += ")";
}

} // namespace NBrenmark::NConfig
