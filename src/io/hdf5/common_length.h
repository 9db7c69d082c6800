#pragma once
// Arrays of one store have one length, or its rows mean nothing.

#include "io/hdf5/error_text.h"

#include <QtGlobal>
#include <string>
#include <vector>

namespace NBrenmark {

/// A form that moves nothing: holds the lengths of the arrays that are stored against each other.
class CCommonLength
{
public:
    /// \param owner  of the arrays, for the text: "The surface-surface contacts"
    explicit CCommonLength(std::string owner) : owner(std::move(owner)) {}

    /// \throws hdf5_error  if the array is of another length than those before
    template <class T>
    void rows(const std::string& name, const std::vector<T>& values, bool stored = true)
    {
        if (!stored)
            return;
        if (firstName.empty()) {
            firstName = name;
            length = values.size();
        }
        if (values.size() != length)
            throw hdf5_error(owner + " have " + std::to_string(length) + " rows of " + firstName + " and " +
                             std::to_string(values.size()) + " of " + name + ".");
    }
    template <class T>
    void plainRows(const std::string& name, const std::vector<T>& values, bool stored = true)
    {
        rows(name, values, stored);
    }
    template <class TBody>
    void group(const std::string&, TBody&& body)
    {
        body();
    }

    /// 0 without a stored array.
    quint32 common() const { return static_cast<quint32>(length); }

private:
    std::string owner;
    std::string firstName;
    std::size_t length = 0;
};

} // namespace NBrenmark
