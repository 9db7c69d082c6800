#include "platform/documents_folder.h"
#include "platform/performance_counter.h"
#include "platform/plugin_library.h"

#include <gtest/gtest.h>
#include <chrono>
#include <thread>

namespace NBrenmark {

TEST(Host, counterRunsAtItsFrequency)
{
    const auto clockStart = std::chrono::system_clock::now();
    const qint64 start = performanceCounter();
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    const double seconds =
        static_cast<double>(performanceCounter() - start) / static_cast<double>(performanceFrequency());
    const double elapsed = std::chrono::duration<double>(std::chrono::system_clock::now() - clockStart).count();
    EXPECT_GE(seconds, 0.03);
    EXPECT_LE(seconds, 1.01 * elapsed); // the other clock was read before and after
}

TEST(Host, namesFoldersAndLibraries)
{
    const QString folder = documentsFolder();
    EXPECT_TRUE(folder.endsWith('/'));
    EXPECT_FALSE(folder.endsWith("//"));
    EXPECT_FALSE(folder.contains('\\'));
    EXPECT_EQ(pluginExtension().at(0), QChar('.'));
}

} // namespace NBrenmark
