#pragma once
// The border between what throws inside an operation and the yes or no that its caller gets.

#include "core/log.h"
#include "core/log_titles.h"
#include "io/hdf5/error_text.h"

#include <QString>

#include <H5Cpp.h>

#include <exception>
#include <string>

namespace NBrenmark {

/// Hands a failure to the log. \param cause  eCauseNone: the one whom the title blames
inline void reportFailure(const SLogTitle& title, const QString& text, ECause cause = eCauseNone)
{
    reportFailure(cause == eCauseNames ? NLogTitle::hdf5Names : title, text.toStdString(), cause);
}

/// Runs body. What it throws ends here: it is reported and the result is false.
/// \param title  of the message; names and texts without a place in the format are reported under "HDF5 names"
/// \param what   what went wrong then, a full sentence: the cause follows on a line of its own
template <class TBody>
bool guarded(const SLogTitle& title, const QString& what, TBody&& body)
{
    clearLastHdf5Error();
    try {
        body();
        return true;
    }
    catch (const H5::Exception& error) {
        reportFailure(title, what + "\n" + QString::fromStdString(error.getDetailMsg()) + lastHdf5Error() + ".",
                      lastHdf5ErrorWasMemory() ? eCauseMemory : eCauseNone);
    }
    catch (const std::exception& error) {
        const ECause cause = causeOf(error, eCauseNone);
        reportFailure(title,
                      what + "\n" + QString::fromStdString(textOf(error)) +
                          (cause == eCauseNone ? lastHdf5Error() : QString()),
                      cause);
    }
    return false;
}

} // namespace NBrenmark
