#include "brenmark/terminal.h"

#include "brenmark/exit_codes.h"

#include "core/control_characters.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace NBrenmark {

namespace {

EColour colourWanted = eColourAuto;

std::string hexadecimal(char32_t c, int digits)
{
    char text[12];
    std::snprintf(text, sizeof text, digits == 2 ? "\\x%02x" : "\\u%04x", static_cast<unsigned>(c));
    return text;
}

struct SCharacter
{
    char32_t code = 0;
    size_t bytes = 0; ///< 0: no UTF-8 there
};

SCharacter characterAt(const std::string& text, size_t at)
{
    const auto byte = [&](size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0u; };
    const unsigned lead = byte(at);
    if (lead < 0x80)
        return {static_cast<char32_t>(lead), 1};
    const size_t bytes = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    char32_t code = lead & (0xFFu >> (bytes + 1));
    for (size_t i = 1; i < bytes; ++i) {
        if ((byte(at + i) & 0xC0) != 0x80)
            return {};
        code = (code << 6) | (byte(at + i) & 0x3F);
    }
    constexpr char32_t least[] = {0x80, 0x800, 0x10000}; // a longer form than needed may hide a control character
    const bool isCharacter = lead >= 0xC2 && lead <= 0xF4 && code >= least[bytes - 2] && code <= 0x10FFFF;
    return isCharacter ? SCharacter{code, bytes} : SCharacter{};
}

/// \param kept  control characters that stay
bool isPlain(char c, const char* kept)
{
    return (c >= 0x20 && c < 0x7F) || (c != '\0' && std::strchr(kept, c) != nullptr);
}

bool isPlain(const std::string& text, const char* kept)
{
    return std::all_of(text.begin(), text.end(), [kept](char c) { return isPlain(c, kept); });
}

std::string escaped(const std::string& text, const char* kept)
{
    const auto isOther = [kept](char c) { return !isPlain(c, kept); };
    auto at = static_cast<size_t>(std::find_if(text.begin(), text.end(), isOther) - text.begin());
    std::string out = text.substr(0, at);
    while (at < text.size()) {
        const SCharacter next = characterAt(text, at);
        if (next.bytes == 0)
            out += hexadecimal(static_cast<unsigned char>(text[at]), 2);
        else if (!isPlain(text[at], kept) && (isControlCharacter(next.code) || isDirectionControl(next.code)))
            out += hexadecimal(next.code, 4);
        else
            out.append(text, at, next.bytes);
        at += std::max<size_t>(next.bytes, 1);
    }
    return out;
}

} // namespace

std::string safeText(const std::string& text) { return escaped(text, "\n\t"); }

std::string oneLine(const std::string& text) { return escaped(text, ""); }

std::string shellQuoted(const std::string& argument)
{
    const char* const plain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._+-";
    if (!argument.empty() && argument.find_first_not_of(plain) == std::string::npos)
        return argument;
    std::string result = "'";
    for (const char c : argument)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + '\'';
}

void chooseColour(EColour wanted) { colourWanted = wanted; }

bool errorIsTerminal()
{
    const char* const terminal = std::getenv("TERM");
    return isatty(STDERR_FILENO) && !(terminal && std::strcmp(terminal, "dumb") == 0);
}

bool errorHasColour()
{
    if (colourWanted != eColourAuto)
        return colourWanted == eColourAlways;
    const char* const noColour = std::getenv("NO_COLOR"); // counts if it isn't empty: no-color.org
    if (noColour && *noColour)
        return false;
    const char* const force = std::getenv("FORCE_COLOR");
    if (force && *force)
        return std::strcmp(force, "0") != 0 && std::strcmp(force, "false") != 0;
    return errorIsTerminal();
}

int errorColumns()
{
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

std::string coloured(const std::string& word, const char* colour)
{
    return errorHasColour() ? std::string("\x1b[") + colour + 'm' + word + "\x1b[0m" : word;
}

void printError(const std::string& text) { printSequences(safeText(text)); }

void printSequences(const std::string& text)
{
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
}

void occupyStandardStreams()
{
    // Open for the wrong direction: what is printed there fails, as it would have.
    for (int stream = STDIN_FILENO; stream <= STDERR_FILENO; ++stream)
        if (fcntl(stream, F_GETFD) < 0 && errno == EBADF &&
            ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY) != stream)
            std::_Exit(eExitTarget); // not even these can be had
}

bool COutputFailure::readerGone() const { return error == EPIPE; }

std::string COutputFailure::text() const { return std::string("standard output: ") + std::strerror(error); }

void printResult(const std::string& text)
{
    const auto print = [](const std::string& safe) {
        errno = 0;
        if (std::fwrite(safe.data(), 1, safe.size(), stdout) != safe.size())
            throw COutputFailure(errno);
    };
    isPlain(text, "\n\t") ? print(text) : print(safeText(text));
}

void flushResult()
{
    errno = 0;
    if (std::fflush(stdout) != 0)
        throw COutputFailure(errno);
}

} // namespace NBrenmark
