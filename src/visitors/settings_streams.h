#pragma once
// The door between what a settings file holds and its stream: declared here, where the stored classes see it, and
// defined in io/settings, which alone knows the bytes. Reads and writes are those of IReadWrite.

#include <functional>

namespace NBrenmark {

class CCustomPropertyManager;
class CVersionedStream;
class IEntryForm;
class IProgressController;
namespace NField {
class CFieldManager;
}
namespace NLegacySupport {
class CLegacyCustomPropertyManager;
}
namespace NSelection {
class CCarriedSelections;
class CSelection;
class CSelectionMap;
} // namespace NSelection

namespace NSettingsFamily {

/// Runs a form over the stream. \throws std::exception  what is read ends early, or can't be believed
bool readForm(CVersionedStream& stream, const std::function<void(IEntryForm&)>& form);
bool writeForm(CVersionedStream& stream, const std::function<void(IEntryForm&)>& form);

bool read(CVersionedStream& stream, NSelection::CSelection& selection);
bool read(CVersionedStream& stream, NSelection::CSelectionMap& selections, IProgressController* progress);
bool write(CVersionedStream& stream, NSelection::CSelectionMap& selections, IProgressController* progress);
bool read(CVersionedStream& stream, NSelection::CCarriedSelections& carried);
bool write(CVersionedStream& stream, NSelection::CCarriedSelections& carried);
bool read(CVersionedStream& stream, NField::CFieldManager& fields, IProgressController* progress);
bool write(CVersionedStream& stream, NField::CFieldManager& fields, IProgressController* progress);
bool read(CVersionedStream& stream, CCustomPropertyManager& manager);
bool write(CVersionedStream& stream, CCustomPropertyManager& manager);

/// The property file of an old deck. \return an EPropertyFileResult
int readPropertyFile(NLegacySupport::CLegacyCustomPropertyManager& manager);

} // namespace NSettingsFamily

} // namespace NBrenmark
