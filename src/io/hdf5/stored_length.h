#pragma once
// Arrays of one store have one length, or its rows mean nothing. The lengths are compared before memory is taken.

#include "core/memory_ceiling.h"
#include "io/hdf5/form.h"

#include <string>
#include <vector>

namespace NBrenmark {

/// A form that reads no values: holds the lengths of the stored arrays against each other.
class CStoredLength
{
public:
    /// \param owner  of the arrays, with its verb: "The contacts have"
    CStoredLength(CHdf5FormReader& in, std::string owner) : in(in), owner(std::move(owner)) {}

    /// \throws hdf5_error  if the array has another length than those before
    template <class T>
    void rows(const std::string& name, const std::vector<T>&, bool stored = true)
    {
        if (!stored)
            return;
        const hsize_t found = in.arrays().storedRows(name);
        if (firstName.empty()) {
            firstName = name;
            length = found;
        }
        if (found != length)
            throw hdf5_error(owner + ' ' + std::to_string(length) + " rows of " + firstName + " and " +
                             std::to_string(found) + " of " + name + ".");
        storedBytes += sizeof(T);
    }
    template <class T>
    void plainRows(const std::string& name, const std::vector<T>& values, bool stored = true)
    {
        rows(name, values, stored);
    }
    template <class TBody>
    void group(const std::string& name, TBody&& body)
    {
        in.group(name, body);
    }

    /// 0 without a stored array. Counts the memory for the arrays that aren't stored and become zeros.
    /// \param rowBytes  that a row takes in all arrays
    /// \throws hdf5_error  for more rows than can be counted
    quint32 admitted(quint64 rowBytes) const
    {
        if (length > std::numeric_limits<quint32>::max())
            throw hdf5_error(owner + ' ' + std::to_string(length) + " rows.");
        if (rowBytes > storedBytes)
            admitMemory(length * (rowBytes - storedBytes), "the arrays that aren't stored");
        return static_cast<quint32>(length);
    }

private:
    CHdf5FormReader& in;
    std::string owner;
    std::string firstName;
    hsize_t length = 0;
    quint64 storedBytes = 0;
};

} // namespace NBrenmark
