#pragma once
// Where in a deck the work is: a message of the log takes its place from here, so that no text repeats it.

#include <QString>
#include <QtGlobal>
#include <optional>
#include <string>

namespace NBrenmark {

struct SDataPlace
{
    std::string file;                ///< name without its folder: "pile.dem.scn.1"
    std::optional<quint32> timestep; ///< none outside of timesteps
    std::string block;               ///< "contacts", "creator data"; empty outside of blocks
    std::string object;              ///< the name of one material, group, property, ...; empty for none

    SDataPlace inTimestep(quint32 number) const;
    SDataPlace inBlock(const std::string& name) const;
    /// "pile.dem, timestep 3", or "pile.dem, creator data" outside of timesteps; empty without a file.
    std::string text() const;
};

/// The file at a path.
SDataPlace placeIn(const QString& path);

/// The place of the work on this thread; a worker begins with that of the thread that made it.
const SDataPlace& placeAtWork();

/// Moves the work of this thread elsewhere while it lives. The scopes of a thread end in the reverse of their order.
class CPlaceScope
{
public:
    explicit CPlaceScope(SDataPlace place);
    ~CPlaceScope();
    CPlaceScope(const CPlaceScope&) = delete;
    CPlaceScope& operator=(const CPlaceScope&) = delete;

private:
    const SDataPlace place;
    const SDataPlace* const before;
};

} // namespace NBrenmark
