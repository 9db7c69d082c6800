// One walk over the links of a group, for all of their names.
#include "io/hdf5/child_names.h"

#include <exception>

namespace NBrenmark {

namespace {
struct SWalk
{
    std::vector<std::string> names;
    std::exception_ptr failure; ///< must not pass through the library, which would keep its lock
};
} // namespace

static herr_t enter(hid_t, const char* name, const H5L_info_t*, void* data)
{
    auto& walk = *static_cast<SWalk*>(data);
    try {
        walk.names.emplace_back(name);
        return 0;
    }
    catch (...) {
        walk.failure = std::current_exception();
        return -1;
    }
}

std::vector<std::string> childNames(const H5::H5Location& group)
{
    SWalk walk;
    const herr_t status = H5Literate(group.getId(), H5_INDEX_NAME, H5_ITER_INC, nullptr, enter, &walk);
    if (walk.failure)
        std::rethrow_exception(walk.failure);
    if (status < 0)
        throw H5::GroupIException("childNames", "H5Literate failed");
    return std::move(walk.names);
}

} // namespace NBrenmark
