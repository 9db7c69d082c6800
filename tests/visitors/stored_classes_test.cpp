// The table of stored classes, and what it makes of the two interfaces.
#include "maths/axis_angle.h"
#include "maths/transform.h"
#include "physics/hertz_mindlin_no_slip.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include "support/samples.h"
#include <gtest/gtest.h>
#include <cstring>
#include <set>
#include <type_traits>

namespace NBrenmark {

/// Where an operation stands in the table of virtual operations. A pointer to a virtual member holds the offset
/// into that table plus one on the hosts that this builds for.
template <class TMember>
static std::size_t slotOf(TMember member)
{
    std::uintptr_t offset = 0;
    std::memcpy(&offset, &member, sizeof(offset));
    return (offset - 1) / sizeof(void*);
}

TEST(StoredClasses, aRowIsASlotInTheOrderOfTheTable)
{
    const std::vector<std::size_t> readSlots = {
#define STORED(operation, ...) slotOf(&IFileVisitorReader::read##operation),
#define LEGACY(operation, ...) slotOf(&IFileVisitorReader::read##operation),
#include "visitors/stored_classes.def"
    };
    const std::vector<std::size_t> writeSlots = {
#define STORED(operation, ...) slotOf(&IFileVisitorWriter::write##operation),
#include "visitors/stored_classes.def"
    };
    // Numbers of slots after the destructor that hosts of this contract count on.
    EXPECT_EQ(readSlots.size(), 136u);
    EXPECT_EQ(writeSlots.size(), 115u);
    for (const std::vector<std::size_t>* table : {&readSlots, &writeSlots})
        for (std::size_t row = 0; row < table->size(); ++row)
            EXPECT_EQ((*table)[row], table->front() + row) << "row " << row;
}

TEST(StoredClasses, everyOperationAndColumnIsSpelledOnce)
{
    const std::set<std::string> kinds{"all", "creator", "timestep", "both", "nothing"};
    std::set<std::string> operations;
    std::size_t rows = 0;
    const auto meet = [&](const char* operation, std::initializer_list<std::string> columns) {
        ++rows;
        operations.insert(operation);
        for (const std::string& column : columns)
            EXPECT_EQ(kinds.count(column), 1u) << operation << ": " << column;
    };
#define STORED(operation, type, hdf5Read, hdf5Write, legacyRead, legacyWrite, ...)                                     \
    meet(#operation, {#hdf5Read, #hdf5Write, #legacyRead, #legacyWrite});
#define LEGACY(operation, type, legacyRead) meet(#operation, {#legacyRead});
#include "visitors/stored_classes.def"
    EXPECT_EQ(operations.size(), rows);
}

/// Writes down which operation was called, and with which object.
class CRecordingReader : public IFileVisitorReader
{
public:
#define STORED(operation, type, ...)                                                                                   \
    void read##operation(type& object) override { heard.emplace_back(#operation, &object); }
#define LEGACY(operation, type, column)                                                                                \
    void read##operation(NLegacySupport::type&) override { heard.emplace_back(#operation, nullptr); }
#include "visitors/stored_classes.def"

    std::vector<std::pair<std::string, const void*>> heard;
};

class CRecordingWriter : public IFileVisitorWriter
{
public:
#define STORED(operation, type, ...)                                                                                   \
    void write##operation(const type& object) override { heard.emplace_back(#operation, &object); }
#define STAMPED(operation, type, ...)                                                                                  \
    void write##operation(type& object) override { heard.emplace_back(#operation, &object); }
#include "visitors/stored_classes.def"

    std::vector<std::pair<std::string, const void*>> heard;
};

template <class T, class = void>
struct SHandsItselfOver : std::false_type
{
};
template <class T>
struct SHandsItselfOver<T, std::void_t<decltype(std::declval<T&>().read(std::declval<IFileVisitorReader&>()))>>
    : std::true_type
{
};

using Slots = std::vector<std::pair<std::string, const void*>>;

/// The operations that an object of a class calls. A factory's own part comes after that of all factories.
template <class T>
static Slots slotsOf(const std::string& operation, const T* object)
{
    if constexpr (std::is_same_v<T, CDynamicParticleFactory> || std::is_same_v<T, CStaticParticleFactory>)
        return {{"ParticleFactory", object}, {operation, object}};
    else
        return {{operation, object}};
}

template <class T>
static void expectItsOwnSlot(const std::string& operation)
{
    // Points, matrices and their like know no visitor: who holds them hands them over. The version record hands
    // itself over with the root that it is part of.
    if constexpr (SHandsItselfOver<T>::value && !std::is_same_v<T, CSimulationData>) {
        SModel model;
        const std::shared_ptr<T> object = blank<T>(model);
        CRecordingReader reader;
        CRecordingWriter writer;
        // Of a base class the operation of its own, which derived ones call or replace.
        object->T::read(reader);
        object->T::write(writer);
        EXPECT_EQ(reader.heard, slotsOf(operation, object.get())) << operation;
        EXPECT_EQ(writer.heard, slotsOf(operation, object.get())) << operation;
    }
}

TEST(StoredClasses, anObjectHandsItselfToItsOwnSlotAndDoesNothingElse)
{
#define STORED(operation, type, ...) expectItsOwnSlot<type>(#operation);
#include "visitors/stored_classes.def"
}

} // namespace NBrenmark
