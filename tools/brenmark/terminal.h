#pragma once
// The two output streams: results go to standard output, all else to standard error. Whatever is printed passes through
// safeText, so that no name out of a deck and no name of a file steers the terminal.

#include <string>

namespace NBrenmark {

/// A text with each control character but line feed and tab, each direction control and each byte that isn't UTF-8 as
/// "\u009b" or "\xff". In a text of JSON the first form is the same character.
std::string safeText(const std::string& text);
/// The same, with line feeds as well: a name that has one must not pass for two lines.
std::string oneLine(const std::string& text);
/// An argument for the shell.
std::string shellQuoted(const std::string& argument);

/// --color: whether colour is used. "auto" goes by the environment and the terminal.
enum EColour
{
    eColourAuto,
    eColourAlways,
    eColourNever
};
void chooseColour(EColour wanted);

/// Whether standard error is a terminal that understands control sequences: TERM=dumb doesn't.
bool errorIsTerminal();
/// Whether to colour standard error: as --color says, else not with NO_COLOR, else with FORCE_COLOR or on a terminal.
bool errorHasColour();
/// Columns of the terminal that standard error is; 80 where it doesn't say.
int errorColumns();

/// A word in a colour of the terminal, where there is colour; "31" is red.
std::string coloured(const std::string& word, const char* colour);

/// Writes to standard error, and nowhere if it was closed.
void printError(const std::string& text);
/// The same for our own control sequences: the text is written as it is.
void printSequences(const std::string& text);

/// Sees to it that no file is opened under the number of a standard stream that was closed: what is printed would end
/// in it. The first thing that a program does.
void occupyStandardStreams();

/// Standard output is full, closed, or its reader has gone.
class COutputFailure
{
public:
    explicit COutputFailure(int error) : error(error) {}
    /// The reader took what it wanted, as head does: no failure of ours.
    bool readerGone() const;
    /// What to say of any other failure.
    std::string text() const;

private:
    int error;
};

/// Writes to standard output. \throws COutputFailure
void printResult(const std::string& text);
/// Sees to it that all of standard output has arrived. \throws COutputFailure
void flushResult();

/// Runs a body that prints. If the reader has gone, that ends the body, and the command goes on: its exit status counts.
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
