#pragma once
// Ctrl-C and kill while a conversion runs: it is cancelled, so that it leaves whole timesteps.

namespace NBrenmark {

class CConversion;

/// While this lives, SIGINT and SIGTERM cancel the conversion instead of ending the program.
/// Afterwards both do again what they did before. One at a time.
class CInterruptHandler
{
public:
    explicit CInterruptHandler(CConversion& conversion);
    ~CInterruptHandler();
    CInterruptHandler(const CInterruptHandler&) = delete;
    CInterruptHandler& operator=(const CInterruptHandler&) = delete;

    /// Whether one of the two came.
    static bool interrupted();
    /// Cancels again if one of the two came: a conversion that begins forgets what came before it.
    void repeat();

private:
    CConversion& conversion;
};

} // namespace NBrenmark
