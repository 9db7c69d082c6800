// A read or write of one root in a worker of its own.
#include "core/deck/serialiser.h"

#include "core/save_options.h"
#include "support/no_threads.h"

#include <gtest/gtest.h>

#include <optional>

namespace NBrenmark {

// Without a format there is nothing to move, which the worker reports: if it didn't run, it couldn't.
TEST(Serialiser, isDoneByTheCallerWhereNoThreadIsToBeHad)
{
    std::optional<CNoThreads> noThreads;
    for (int round = 0; round < 2; ++round) {
        SSaveOptions options;
        CSimDataReader reader(options);
        EXPECT_FALSE(reader.runAndWait(nullptr));
        EXPECT_EQ(reader.errorText, "Io format for read not set.");
        CSimDataWriter writer(options);
        EXPECT_FALSE(writer.runAndWait());
        EXPECT_EQ(writer.errorText, "Io format for write not set.");
        noThreads.emplace();
    }
}

} // namespace NBrenmark
