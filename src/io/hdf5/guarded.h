#pragma once
// The border between what throws inside an operation and the yes or no that its caller gets.

#include "core/log.h"
#include "io/hdf5/error_text.h"

#include <QString>

#include <H5Cpp.h>

#include <exception>
#include <string>

namespace NBrenmark {

/// Hands a failure to the log.
inline void tellFailure(const char* title, const QString& text) { logMessage(eError, title, text.toStdString()); }

/// Runs body. What it throws ends here: it is told in the log and the result is false.
/// \param title  of the message; names and texts without a place in the format are told under "HDF5 names"
/// \param what   what went wrong then, a full sentence: the cause follows on a line of its own
template <class TBody>
bool guarded(const char* title, const QString& what, TBody&& body)
{
    clearLastHdf5Error();
    try {
        body();
        return true;
    }
    catch (const H5::Exception& error) {
        tellFailure(title, what + "\n" + QString::fromStdString(error.getDetailMsg()) + lastHdf5Error() + ".");
    }
    catch (const unstorable_error& error) {
        tellFailure("HDF5 names", what + "\n" + QString::fromStdString(error.what()));
    }
    catch (const std::exception& error) {
        tellFailure(title, what + "\n" + QString::fromStdString(error.what()) + lastHdf5Error());
    }
    return false;
}

} // namespace NBrenmark
