#pragma once
// What a file holds beside that which its reader asked for: names that no reader knows, and numbers that become others on
// their way into memory. A deck is examined so when it has to be shown that nothing in it was passed over.

#include <QtGlobal>

#include <H5Cpp.h>

#include <set>
#include <string>

namespace NBrenmark {

/// Hears what the readers on this thread ask for while it lives.
class CReadAudit
{
public:
    explicit CReadAudit(bool isWanted);
    ~CReadAudit();
    CReadAudit(const CReadAudit&) = delete;
    CReadAudit& operator=(const CReadAudit&) = delete;

    /// Reports what is in a group and below it, and no reader asked for. Of a group that isn't read at all nothing
    /// else is reported.
    void reportUnread(const H5::H5File& file, const std::string& group);

    // The readers' side; without an audit these do nothing.
    static void askedForObject(const H5::H5Location& location, const std::string& name);
    static void askedForAttribute(const H5::H5Location& location, const std::string& name);
    /// Damage has ended the reading of a group; what is below it has been reported with that.
    static void gaveUp(const H5::H5Location& location, const std::string& name);
    /// A stored number of another kind or of more bytes than the one that it is read into is reported.
    static void compareTypes(const H5::DataType& stored, const H5::DataType& wanted, const char* kind,
                             const std::string& name);
    /// A flag that is neither 0 nor 1 is reported, for it is read as true.
    static void compareFlag(unsigned char stored, const char* kind, const std::string& name);

private:
    void reportUnreadIn(const H5::Group& group, const std::string& path);

    const bool isWanted;
    std::set<std::string> asked; ///< paths; of an attribute that of its owner, "@" and its name
    std::set<std::string> givenUp;
};

/// Reports what a numbered file holds beside its timestep and the model that this brought.
/// \param model  number of the model that its timestep uses
void reportStrayParts(const H5::H5File& file, quint32 number, quint32 model);
/// Reports what the main file of a deck holds beside its header.
void reportStrayParts(const H5::H5File& mainFile, const std::set<std::string>& headerNames);

} // namespace NBrenmark
