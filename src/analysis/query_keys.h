#pragma once
// What the key forms of queries are run with: each key is read, or written, by one line for both.

#include "config/config_manager.h"

#include <QString>

namespace NBrenmark {

class CQueryKeys
{
public:
    CQueryKeys(NConfig::CConfigHandle& handle, bool isReading) : handle(handle), isReading(isReading) {}

    /// A key that is missing is made with the present value.
    /// \throws NConfig::CConfigException  it holds a value of another kind
    template <class T>
    void value(const char* path, T& present)
    {
        T& stored = handle.value<T>(NConfig::CKeyPath::fromString(path), present);
        if (isReading)
            present = stored;
        else
            stored = present;
    }

private:
    NConfig::CConfigHandle& handle;
    const bool isReading;
};

} // namespace NBrenmark
