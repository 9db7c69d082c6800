#pragma once
// How the particles and the contacts of a selection are drawn. A selection carries the record; nothing here draws.

#include <QByteArray>

#include <map>
#include <memory>
#include <string>

namespace NBrenmark {

/// A record whose layout is known to who draws alone: bytes as they came; none for a new selection.
class CDisplayOptions
{
public:
    QByteArray bytes;
};

/// The display options of a deck by name; they live as long as this does, or until they are removed.
class CDisplayOptionManager
{
public:
    /// The options of that name, made when they are missing.
    CDisplayOptions& options(const std::string& name);
    /// Options that have the new name are replaced; where there are none of the old one nothing happens.
    void rename(const std::string& oldName, const std::string& newName);
    void remove(const std::string& name) { byName.erase(name); }
    void clear() { byName.clear(); }
    size_t count() const { return byName.size(); }

private:
    std::map<std::string, std::unique_ptr<CDisplayOptions>> byName;
};

} // namespace NBrenmark
