// Holds what was stored with the parts of a converted deck against each other.
#include "brenmark/storing_check.h"

#include "brenmark/deck_text.h"

#include "core/deck/file_format_manager.h"
#include "io/text/text_output.h"

#include <algorithm>

namespace NBrenmark {

static SDifference otherStored(const std::string& place, const char* detail, const std::string& expected,
                               const std::string& found)
{
    return {eOtherValue, place, detail, expected, found};
}

void CStoringCheck::look(const SSimulationFrame& frame, quint32 number, bool isNew)
{
    const quint32 mask = frame.timestep.particleMask;
    if (isNew) { // it was stored with the masks of its first timestep
        lookAtRecord(frame.creator, modelRoot(number));
        lookAtMasks(frame.creator.particleTypes, mask, modelRoot(number));
    }
    lookAtRecord(frame.timestep, timestepRoot(number));
    lookAtMasks(frame.timestep.particleTypes, mask, timestepRoot(number));
}

void CStoringCheck::lookAtHeader(const IFileFormatManager& manager)
{
    header = {manager.firstVersion, manager.lastVersion, manager.edition};
}

void CStoringCheck::lookAtRecord(const CSimulationData& data, const std::string& root)
{
    versions.push_back({root, data.fileVersion, data.buildRevision, data.buildBranch});
}

void CStoringCheck::add(const std::vector<SRecord>& later)
{
    versions.insert(versions.end(), later.begin(), later.end());
}

void CStoringCheck::lookAtMasks(const CParticleTypes& types, quint32 particleMask, const std::string& root)
{
    const quint32 expected = reduceParticleFields(allParticleFields, particleMask);
    for (const std::unique_ptr<CParticleType>& type : types.types)
        if (type->dataMask != expected)
            masks.push_back(otherStored(root + "/particles/" + NText::segment(type->displayName) + "/dataMask",
                                        "not the fields that the particle mask stands for", NText::text(expected),
                                        NText::text(type->dataMask)));
}

std::vector<SDifference> CStoringCheck::differences(quint32 sourceEdition, bool isConversion) const
{
    std::vector<SDifference> found = masks;
    if (versions.empty())
        return found;
    // A deck of another program has other words in all of its versions.
    const auto own = std::find_if(versions.begin(), versions.end(), [](const SRecord& one) {
        return one.revision == currentBuildRevision && one.branch == currentBuildBranch;
    });
    const SRecord& expected = own != versions.end() ? *own : versions.front();
    quint32 latest = 0;
    for (const SRecord& one : versions) {
        if (one.version < latest) // what is appended is of a later version, or the same
            found.push_back(otherStored(one.root + "/fileVersion", "older than what was stored before it",
                                        versionText(latest).toStdString(), versionText(one.version).toStdString()));
        latest = std::max(latest, one.version);
        const auto compare = [&](const char* name, auto SRecord::*field) {
            if (one.*field != expected.*field)
                found.push_back(otherStored(one.root + '/' + name, "not that of the deck's other records",
                                            NText::text(expected.*field), NText::text(one.*field)));
        };
        compare("buildRevision", &SRecord::revision);
        compare("buildBranch", &SRecord::branch);
    }
    const auto compareHeader = [&](const char* name, quint32 wanted, quint32 stored, const char* detail, auto text) {
        if (stored != wanted)
            found.push_back(otherStored(std::string("deck/") + name, detail, text(wanted), text(stored)));
    };
    const auto asNumber = [](quint32 word) { return std::to_string(word); };
    const auto asVersion = [](quint32 word) { return versionText(word).toStdString(); };
    compareHeader("edition", isConversion ? writtenEdition : sourceEdition, header.edition,
                  "not the one that the deck was written with", asNumber);
    if (isConversion) {
        compareHeader("firstVersion", versions.front().version, header.firstVersion, "not that of the first model",
                      asVersion);
        compareHeader("lastVersion", latest, header.lastVersion, "not the latest one in the deck", asVersion);
    }
    return found;
}

} // namespace NBrenmark
