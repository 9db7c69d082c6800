// A read or write of one root in a worker of its own.
#include "core/deck/serialiser.h"

#include "core/save_options.h"

#include <gtest/gtest.h>

namespace NBrenmark {

// Without a format there is nothing to move, which the worker tells: if it didn't run, it couldn't.
TEST(Serialiser, isDoneByTheCallerWhereNoThreadIsToBeHad)
{
    for (const uint stackSize : {0u, 1u}) { // 0 is any, and with one byte no thread starts
        SSaveOptions options;
        CSimDataReader reader(options);
        reader.setStackSize(stackSize);
        EXPECT_FALSE(reader.runAndWait(nullptr));
        EXPECT_EQ(reader.errorText, "Io format for read not set.");
        CSimDataWriter writer(options);
        writer.setStackSize(stackSize);
        EXPECT_FALSE(writer.runAndWait());
        EXPECT_EQ(writer.errorText, "Io format for write not set.");
    }
}

} // namespace NBrenmark
