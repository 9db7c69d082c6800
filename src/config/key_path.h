#pragma once
// The address of a value in the configuration tree, and the one exception that the tree throws.

#include <cstdint>
#include <exception>
#include <string>
#include <vector>

namespace NBrenmark::NConfig {

/// A path into the tree, element by element. Without elements it addresses the root.
class CKeyPath
{
public:
    CKeyPath() = default;
    /// base, continued by the elements of relative.
    CKeyPath(const CKeyPath& base, const CKeyPath& relative);
    explicit CKeyPath(std::vector<std::string> elements);
    CKeyPath(const CKeyPath&) = default;
    CKeyPath(CKeyPath&&) = default;
    CKeyPath& operator=(const CKeyPath&) = default;
    CKeyPath& operator=(CKeyPath&&) = default;
    virtual ~CKeyPath() = default;

    /// The path that a text names: its elements are between colons, empty ones don't count.
    static CKeyPath fromString(const std::string& text);
    /// The elements joined by colons.
    std::string toString() const;

    const std::vector<std::string>& elements() const { return path; }
    bool isEmpty() const { return path.empty(); }
    /// This path, continued by one element.
    CKeyPath child(const std::string& element) const;

private:
    std::vector<std::string> path;
};

/// Element by element, by unsigned bytes; of a path and its continuation the path comes first.
bool operator<(const CKeyPath& a, const CKeyPath& b);
bool operator==(const CKeyPath& a, const CKeyPath& b);

enum EConfigError : std::uint32_t
{
    eKeyPathNotValid = 0,
    eValueOfDifferentType = 1,
    eValueInInvalidFormat = 2
};

/// A key that can't be used as it was meant.
class CConfigException : public std::exception
{
public:
    CConfigException(EConfigError code, CKeyPath keyPath, std::string details = std::string());

    const char* what() const noexcept override { return text.c_str(); }
    EConfigError code() const { return error; }
    const CKeyPath& keyPath() const { return key; }
    const std::string& details() const { return detailText; }

private:
    EConfigError error;
    CKeyPath key;
    std::string detailText;
    std::string text;
};

} // namespace NBrenmark::NConfig
