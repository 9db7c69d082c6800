#pragma once
// The tree of settings that a deck carries, and the objects that read their settings out of it.
// The tree has no lock: it belongs to the thread that drives a conversion.

#include "config/config_node.h"
#include "config/key_path.h"

#include <QtGlobal>

#include <memory>
#include <set>
#include <string>

namespace NBrenmark::NConfig {

class CConfigManager;

/// An object that has settings.
class IConfigurable
{
public:
    virtual ~IConfigurable() = default;
    /// Binds to the manager and reads the object's keys.
    virtual bool loadConfiguration(CConfigManager& manager) = 0;
    /// Brings the object back to its defaults.
    virtual bool resetConfiguration(bool keepTree, CConfigManager& manager) = 0;
};

/// A view of the tree from a base path on.
class CConfigHandle
{
public:
    CConfigHandle(CConfigManager& manager, CKeyPath basePath);
    virtual ~CConfigHandle() = default;

    /// As the manager's operations of this name, the path being relative to the base path.
    template <class T>
    T& value(const CKeyPath& keyPath) const;
    template <class T>
    T& value(const CKeyPath& keyPath, const T& defaultValue) const;

    CConfigManager& manager() const { return *owner; }
    const CKeyPath& basePath() const { return base; }

private:
    CConfigManager* owner;
    CKeyPath base;
};

/// The most elements that a path in the tree may have: a damaged line must not build a tower whose fall
/// takes the whole stack.
constexpr size_t greatestDepth = 1000;

/// The program's own version in the number form of configuration files.
constexpr quint32 programVersion = 0x1E0002;
constexpr const char* programVersionText = "30.0.2";
/// The format of configuration files that this build writes, and the latest that it reads.
constexpr const char* currentFormatVersion = "2.4.0.1";

/// Major number in bits 16 and up, minor in 8 to 15, patch in 0 to 7, of the first three sections of a text.
/// A number too large for its bits counts as the largest.
quint32 versionNumber(const std::string& versionText);

class CConfigManager
{
public:
    CConfigManager();
    CConfigManager(const CConfigManager&) = delete;
    CConfigManager& operator=(const CConfigManager&) = delete;
    virtual ~CConfigManager();

    /// The node of a path, the root for an empty one. If create is false, null where there is none; else the
    /// missing nodes are made on the way, and null comes for a path deeper than greatestDepth alone.
    SConfigNode* findNode(const CKeyPath& keyPath, bool create);
    /// A handle on a node found the same way; null where there is no such node.
    std::unique_ptr<CConfigHandle> handle(const CKeyPath& keyPath, bool create);
    std::unique_ptr<CConfigHandle> rootHandle();

    /// The value of a key, which is created with the default if it has none. Assigning to the result is how
    /// a setting is written.
    /// \throws CConfigException  an empty path or one too deep (code 0), a value of another type (code 1)
    template <class T>
    T& value(const CKeyPath& keyPath, const T& defaultValue);
    template <class T>
    T& value(const CKeyPath& keyPath)
    {
        return value<T>(keyPath, T());
    }
    /// The same for a default of whatever kind, which is the kind that the key must have.
    std::any& valueOfAnyKind(const CKeyPath& keyPath, const std::any& defaultValue);
    /// The value of an existing node, of whatever kind.
    /// \throws CConfigException  code 0 for an empty path or a missing node
    std::any& nodeValue(const CKeyPath& keyPath);
    /// Empties the value of a node, if it exists; its children stay.
    void clearValue(const CKeyPath& keyPath);
    /// The names of a node's children, each as a path of one element.
    std::set<CKeyPath> childKeys(const CKeyPath& keyPath);
    /// Makes a child named by the first free number from 1 on, in at least five digits.
    /// \throws CConfigException  code 0 for a path too deep
    std::unique_ptr<CConfigHandle> createUniqueChild(const CKeyPath& keyPath);
    /// Erases a node with all below it. Nothing happens if there is none, or for an empty path.
    void removeKey(const CKeyPath& keyPath);

    /// Has an object take part in loadAll and resetAll until its place here is given up.
    class CRegistration;
    CRegistration registerConfigurable(IConfigurable& configurable);
    /// Has every registered object read its keys. False if one of them fails; a CConfigException ends the walk.
    bool loadAll();
    /// Empties the tree, whatever keepTree says, and brings every registered object back to its defaults.
    bool resetAll(bool keepTree);

    /// What the file that was read last says about itself.
    const std::string& formatVersion() const { return formatVersionText; }
    const std::string& fileVersion() const { return fileVersionText; }
    void setFormatVersion(const std::string& text) { formatVersionText = text; }
    void setFileVersion(const std::string& text) { fileVersionText = text; }

private:
    template <class TCall>
    bool forAll(const char* failure, TCall&& call);

    SConfigNode root;
    std::shared_ptr<std::set<IConfigurable*>> configurables;
    std::string formatVersionText = currentFormatVersion;
    std::string fileVersionText;
};

/// A place among the registered objects, held by the object itself: neither of object and manager has to
/// outlive the other.
class CConfigManager::CRegistration
{
public:
    CRegistration() = default;
    CRegistration(const std::shared_ptr<std::set<IConfigurable*>>& configurables, IConfigurable& configurable);
    CRegistration(CRegistration&& other) noexcept;
    CRegistration& operator=(CRegistration&& other) noexcept;
    ~CRegistration();

private:
    void giveUp();

    std::weak_ptr<std::set<IConfigurable*>> place;
    IConfigurable* registered = nullptr;
};

template <class T>
T& CConfigManager::value(const CKeyPath& keyPath, const T& defaultValue)
{
    static_assert(isValueType<T>, "a setting has one of the twenty types of ValueTypes");
    return *std::any_cast<T>(&valueOfAnyKind(keyPath, defaultValue));
}

template <class T>
T& CConfigHandle::value(const CKeyPath& keyPath) const
{
    return owner->value<T>(CKeyPath(base, keyPath));
}

template <class T>
T& CConfigHandle::value(const CKeyPath& keyPath, const T& defaultValue) const
{
    return owner->value<T>(CKeyPath(base, keyPath), defaultValue);
}

} // namespace NBrenmark::NConfig
