#pragma once
// The two output streams: results go to standard output, all else to standard error.

#include <string>

namespace NBrenmark {

/// Whether standard error is a terminal that understands control sequences: TERM=dumb doesn't.
bool errorIsTerminal();
/// The same, with colours wanted: NO_COLOR isn't set.
bool errorHasColour();
/// Columns of the terminal behind standard error; 80 where it doesn't say.
int errorColumns();

/// Writes to standard error, and nowhere if it was closed.
void printError(const std::string& text);

/// Standard output is full, or its reader has gone.
class COutputFailure
{
public:
    explicit COutputFailure(int error) : error(error) {}
    /// The reader took what it wanted, as head does: no failure of ours.
    bool readerGone() const;
    /// What to tell of any other failure.
    std::string text() const;

private:
    int error;
};

/// Writes to standard output. \throws COutputFailure
void printResult(const std::string& text);
/// Sees to it that all of standard output has arrived. \throws COutputFailure
void flushResult();

/// Runs a body that prints; that the reader has gone ends the body, not the command, whose exit
/// code still counts.
template <class TBody>
void unlessReaderIsGone(TBody&& body)
{
    try {
        body();
    }
    catch (const COutputFailure& failure) {
        if (!failure.readerGone())
            throw;
    }
}

} // namespace NBrenmark
