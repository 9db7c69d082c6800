#pragma once
// The particle properties of old decks: their definitions are in a file of their own beside the deck, "name.ppf".
// Such a file is only ever read. From the next save on they live in the settings file.

#include "results/physics_linked_property_manager.h"

#include <string>

namespace NBrenmark::NLegacySupport {

/// Result of reading a property file. A missing one is no failure.
enum EPropertyFileResult : int
{
    ePropertyFileRead = 0, ///< also if there is nothing to read, for no path is set
    ePropertyFileMissing = 2,
    ePropertyFileNotOpened = 3,
    ePropertyFileRefused = 4
};

class CLegacyCustomPropertyManager : public CPhysicsLinkedCustomPropertyManager
{
public:
    using CPhysicsLinkedCustomPropertyManager::CPhysicsLinkedCustomPropertyManager;
    ~CLegacyCustomPropertyManager() override;

    /// Full path of the property file.
    const std::string& propertyFilePath() const { return path; }
    void setPropertyFilePath(const std::string& newPath) { path = newPath; }
    /// Fills the manager from the file, in place of what it holds. It ends empty if the file is refused, and as it
    /// was if there is no file or it can't be opened.
    /// \return an EPropertyFileResult; the reason for a refusal is reported
    int readPropertyFile();

private:
    std::string path;
};

} // namespace NBrenmark::NLegacySupport
