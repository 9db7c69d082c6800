#pragma once
// The state of one traversal of a model, in either direction.

#include "core/save_options.h"

#include <H5Cpp.h>

#include <string>

namespace NBrenmark {

class CHdf5Visitor
{
public:
    CHdf5Visitor(H5::H5File& file, SSaveOptions& options) : file(file), options(options) {}

    H5::H5File& file;              ///< root of the traversal; absolute paths are opened on it
    H5::Group* location = nullptr; ///< where the next attribute, dataset or group goes; not owned
    std::string pendingName;       ///< of the next value that has no name of its own
    SSaveOptions& options;         ///< what to store or to fetch
};

/// Puts the visitor's location on a group for as long as it lives.
class CHdf5Place
{
public:
    CHdf5Place(CHdf5Visitor& visitor, H5::Group& group) : visitor(visitor), before(visitor.location)
    {
        visitor.location = &group;
    }
    ~CHdf5Place() { visitor.location = before; }
    CHdf5Place(const CHdf5Place&) = delete;
    CHdf5Place& operator=(const CHdf5Place&) = delete;

private:
    CHdf5Visitor& visitor;
    H5::Group* before;
};

} // namespace NBrenmark
