#pragma once
// The values that a command asks for, timestep by timestep.

#include "brenmark/commands.h"
#include "brenmark/deck_reader.h"
#include "brenmark/values/chosen_units.h"
#include "brenmark/values/members.h"
#include "brenmark/values/value_table.h"
#include "brenmark/view/left_out.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace NBrenmark {

/// "particle"
std::string ownerWord(NAttributes::EAttributeOwner owner);
/// The first timestep, and the one after the last. \throws CFailure  the deck has none of that number
std::pair<quint32, quint32> chosenTimesteps(const CDeckReader& reader, const SValuesOptions& options);
/// Has timesteps read without the arrays of particles and contacts that these attributes aren't made of, where the family
/// stores arrays apart. Names that aren't known are those of custom properties, which are read in any case.
/// \param ofParticles  they are asked of particles, if those have them: nothing else may be in the timesteps
void readAlone(CDeckReader& reader, const std::vector<std::string>& attributes, bool ofParticles);
/// Whether an attribute that particles have is theirs. \param owner  the word that the user gave; may be empty
inline bool mayBeOfParticles(const std::string& owner) { return owner.empty() || owner == "particle"; }
/// The heads of an attribute's columns, with their units.
std::vector<std::string> columnHeads(const NAttributes::CAttribute& attribute, const CChosenUnits& units);

/// The values that a command asks for, timestep by timestep.
class CValueReading
{
public:
    CValueReading(CDeckReader& reader, const SValuesOptions& options);

    const std::vector<std::string>& heads() const { return headTexts; }
    std::string timeHead() const { return units.withUnit("time", eTimeQuantity); }
    NAttributes::EAttributeOwner owner() const { return askedOwner; }
    /// Hands over every value, in blocks, of the timesteps that can be read.
    /// \throws CFailure  the deck holds none of the values, though it has rows for them
    void forEachBlock(const std::function<void(const SValueBlock&)>& visit);
    /// The same by hand, where several attributes are read in one pass: those of a timestep; and at the end the check.
    void readTimestep(quint32 number, const std::function<void(const SValueBlock&)>& visit);
    void requireAny() const;
    /// Reports timesteps that were left out, and rows without values.
    void printMissing() const;
    /// The timesteps among those asked for that can't be read.
    const CLeftOut& leftOut() const { return unread; }

private:
    void loadFirst();
    void requireSource(const std::vector<SValueSource>& sources) const;

    CDeckReader& reader;
    const SValuesOptions& options;
    CChosenUnits units;
    quint32 first = 0;
    quint32 end = 0;
    NAttributes::EAttributeOwner askedOwner = NAttributes::eParticleAttribute;
    std::vector<std::string> headTexts;
    std::optional<CSelectedRows> selected;
    CLeftOut unread;
    quint64 rowsRead = 0;
    quint64 rowsWithout = 0;
};

} // namespace NBrenmark
