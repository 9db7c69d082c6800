#pragma once
// Two texts of one part of a deck, compared as trees. What is missing, has another name or another number of rows is one
// difference, however many lines of the text follow from it.

#include "brenmark/meant_changes.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace NBrenmark {

enum EDifferenceKind
{
    eOtherValue,
    eOtherArray, ///< of the same kind and width
    eOtherCount, ///< of rows or entries
    eMissing,    ///< in the converted deck
    eExtra,      ///< only in the converted deck
    eRenamed,
    eUnreadable,     ///< in the converted deck, or repaired there by its reader
    eWithinTolerance ///< which is none
};

struct SDifference
{
    EDifferenceKind kind;
    std::string place;  ///< path in the text of a deck
    std::string detail; ///< what differs, in words
    std::string source; ///< value, or row of an array; empty where there is none
    std::string converted;
};

/// Differences of definitions that show again wherever the things defined have values.
struct SConsequences
{
    std::map<std::string, std::string> renamed; ///< paths below a model, new names
    std::set<std::string> gone;                 ///< on one side: paths below a model
    std::map<std::string, std::string> renamedProperties;
    std::set<std::string> goneProperties; ///< or of another width
    bool noProperties = false;            ///< the file with their definitions is missing

    /// Whether a whole group of the geometry is on one side only.
    bool isGeometryGone() const;
    /// Takes in what follows from a difference of the settings or of a model.
    /// \param root  with which the paths of that model begin
    void note(const SDifference& difference, const std::string& root);
};

/// The differences of two texts, in their order.
/// \param root   with which all paths begin
/// \param known  what isn't reported again
std::vector<SDifference> textDifferences(const TextLines& source, const TextLines& converted, const std::string& root,
                                         const SConsequences& known);

} // namespace NBrenmark
