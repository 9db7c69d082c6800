#pragma once
// What verify keeps of a deck: of a timestep's text the digest alone. Where two digests differ both timesteps are read
// once more, for their lines and then for the values of their arrays.

#include "brenmark/array_diff.h"
#include "brenmark/deck_reader.h"
#include "brenmark/meant_changes.h"
#include "brenmark/storing_check.h"
#include "brenmark/text_diff.h"

#include "legacy/creator_upgrades.h"

#include <QByteArray>

#include <string>
#include <vector>

namespace NBrenmark {

class CProgressDisplay;

/// What a report draws of a timestep.
struct STimestepFigures
{
    double time = 0.0; ///< s
    quint64 particles = 0;
    double smallest = 0.0; ///< size of a particle, m: twice the greatest reach from its centre
    double mean = 0.0;
    double largest = 0.0;
    double bytes = 0.0;   ///< as it is stored
    double kinetic = 0.0; ///< of all particles, as the timestep's energies have it, J
    double potential = 0.0;
};

struct SDeckDigest
{
    struct STimestep
    {
        double time;
        QByteArray text;
        size_t model;       ///< in models
        std::string values; ///< digest of what both families hold
        STimestepFigures figures;
        std::string failure; ///< why it can't be read; empty if it can
    };
    struct SModel
    {
        QByteArray text;
        quint32 firstTimestep;
        std::string values;
        std::vector<SModelChange> changes; ///< from how a legacy deck has it stored
        bool namesPlugins = false;         ///< of a legacy deck alone
    };
    TextLines beside; ///< the timesteps
    std::vector<STimestep> timesteps;
    std::vector<SModel> models;
    Ledger messages; ///< of the reading
    CStoringCheck storing;
    EDeckFormat format = eFormatUnknown;
};

/// Whether a timestep that can't be read ends the reading of a deck.
enum EUnreadable
{
    eEndsTheReading,
    eIsNoted
};

/// Timesteps that follow one another, read by another process.
struct SDigestPart
{
    quint32 first = 0;
    SDeckDigest digest; ///< without what is beside the timesteps

    quint32 end() const { return first + static_cast<quint32>(digest.timesteps.size()); }
};
using DigestParts = std::vector<SDigestPart>;
quint64 timestepsOf(const DigestParts& parts);

/// Takes the digest of a deck while it is read, whoever reads it. As a listener it notes what upgrades do to its models.
class CDigestTaker : public NLegacySupport::IUpgradeListener
{
public:
    explicit CDigestTaker(EDeckFormat format) { digest.format = format; }

    /// Takes the current frame.
    /// \param modelChanged  whether it has another model than the one before
    /// \param bytes         that the timestep takes as it is stored
    void take(const CSimulation& deck, bool modelChanged, double bytes);
    void upgrading(CCreatorData& creator) override;
    void upgraded(CCreatorData& creator) override;
    /// Takes timesteps that were read elsewhere.
    void take(const SDigestPart& part);
    /// Notes a timestep that can't be read.
    void note(const STimestepIndexEntry& entry, const std::string& failure);
    /// What is beside the timesteps, after them: a model that asks for a custom property defines it in the settings.
    void takeBeside(const CSimulation& deck);
    /// \param messages  of the reading
    SDeckDigest taken(const Ledger& messages);

private:
    void noteUpgrade(CCreatorData& creator, SDeckDigest::SModel& model) const;

    SDeckDigest digest;
    TextLines stored;                  ///< of the model that is being upgraded
    std::vector<SModelChange> changes; ///< of the model that was upgraded last
};

/// \param read  timesteps whose digests are known, in their order, and not the last one: what is beside the timesteps is
///              complete only when a model has been read
/// \throws CFailure  the deck can't be opened, or a timestep can't be read and that isn't just noted
SDeckDigest digestOf(const QString& path, const std::string& work, EUnreadable unreadable, CProgressDisplay& progress,
                     const DigestParts& read = {});

/// A model or timestep that is to be compared line by line.
struct SPart
{
    bool isModel;
    quint32 source; ///< the timestep to load
    quint32 converted;
    std::string root;
};

/// The lines of some parts of a deck.
/// \param number  which of a part's timesteps is the deck's
std::vector<TextLines> linesOf(const QString& path, const std::vector<SPart>& parts, quint32 SPart::*number);

/// Puts into the differences of arrays what their values show, and marks those that a tolerance allows.
void describeArrays(std::vector<SDifference>& differences, const std::vector<SPart>& parts, const QString& source,
                    const QString& converted, const STolerances& tolerances);
/// Marks the differences of single values that a tolerance allows: real ones, whatever they look like in the text.
/// \param parts  of the deck; empty for what is beside them
void allowValues(std::vector<SDifference>& differences, const std::vector<SPart>& parts, const QString& source,
                 const STolerances& tolerances);

} // namespace NBrenmark
