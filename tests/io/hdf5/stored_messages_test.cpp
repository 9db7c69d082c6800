// Messages of object headers, byte by byte as the HDF5 file format lays them out: each is taken whole, and refused when
// its last byte is missing.
#include "io/hdf5/stored_messages.h"

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

namespace NBrenmark {

TEST(StoredMessages, areTakenWholeAndRefusedWithoutTheirLastByte)
{
    const auto extent = [](CFileBytes& bytes) { EXPECT_EQ(takeExtent(bytes), 15u); };
    const auto filters = [](CFileBytes& bytes) {
        checkFilters(bytes);
        bytes.skip(bytes.left());
    };
    const std::tuple<const char*, const char*, std::function<void(CFileBytes&)>> cases[] = {
        // Version, rank, flags (1: the greatest extents follow), kind; rows and columns; the greatest of them.
        {"an extent", "02 02 01 01  0500000000000000 0300000000000000  ffffffffffffffff 0300000000000000", extent},
        {"an extent of version 1", "01 02 00 00 00000000  0500000000000000 0300000000000000", extent},
        // Version, count; of each filter its identifier, the bytes of its name, flags and the number of its values, then
        // the name and the values, filled up to eight bytes.
        {"two filters",
         "01 02 000000000000  0200 0000 0100 0100 08000000 00000000  0100 0800 0100 0100 6465666c61746500 06000000 "
         "00000000",
         filters},
        // Without the length of a name where the identifier is below 256, and filled up nowhere.
        {"two filters of version 2", "02 02  0200 0100 0100 08000000  0100 0100 0100 06000000", filters},
        {"a filter with a name of version 2", "02 01  0f7d 0400 0100 0100 6c7a6600 06000000", filters},
    };
    for (const auto& [what, hex, take] : cases) {
        const QByteArray message = QByteArray::fromHex(hex);
        CFileBytes whole(message, 0);
        EXPECT_NO_THROW(take(whole)) << what;
        EXPECT_EQ(whole.left(), 0u) << what;
        CFileBytes cut(message.chopped(1), 0);
        EXPECT_THROW(take(cut), hdf5_error) << what;
    }
}

} // namespace NBrenmark
