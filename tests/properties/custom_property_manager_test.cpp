// The definitions of custom properties: names, listeners, and the block that they take in a deck's settings.
#include "properties/custom_property_manager.h"

#include "core/versioned_stream.h"
#include "properties/custom_property_data.h"

#include "support/log_capture.h"
#include <QBuffer>
#include <gtest/gtest.h>
#include <limits>

namespace NBrenmark {

using CMetaData = CCustomPropertyMetaData;

static bool add(CCustomPropertyManager& manager, const std::string& name, unsigned int type = eDoubleProperty,
                unsigned int elements = 1, const std::vector<double>& values = {})
{
    auto metaData = std::make_unique<CMetaData>(name, type, elements, 0, values);
    return manager.addProperty(metaData);
}

/// Writes down what it hears.
class CRecordingListener : public IPropertyListener
{
public:
    void managerChanged(CCustomPropertyManager& manager, int value) override
    {
        heard += "changed(" + manager.name + ", " + std::to_string(value) + ") ";
    }
    void propertyAdded(CCustomPropertyManager& manager) override
    {
        heard += "added(" + std::to_string(manager.propertyCount()) + ") ";
    }
    std::string heard;
};

TEST(PropertyDefinition, hasAValueForEachOfAtMost256Elements)
{
    struct SCase
    {
        CMetaData metaData;
        unsigned int elements;
        std::vector<double> firstValues;
    };
    const SCase cases[] = {
        {CMetaData("a", 0, 2, 7), 2, {0, 0}},
        {CMetaData("a", 1, 2, 7), 2, {0, 0}},
        {CMetaData("a", 0, 0, 7), 0, {}},
        {CMetaData("a", 0, 1000, 7), 256, {0, 0}},
        {CMetaData("a", 0, 0xFFFFFFFFu, 7, std::vector<double>{1, 2}), 256, {1, 2, 0}},
        {CMetaData("a", 0, 3, 7, std::vector<double>{1, 2}), 3, {1, 2, 0}},
        {CMetaData("a", 0, 1, 7, std::vector<double>{1, 2}), 1, {1}},
        {CMetaData("a", 1, 3, 7, std::vector<double>{0.5, 0, 9}), 3, {1, 0, 1}},
        {CMetaData("a", 1, 257, 7, std::vector<bool>(300, true)), 256, {1, 1}},
        {CMetaData("a", 0, 2, 7, std::vector<bool>{true, false}), 2, {1, 0}},
    };
    int number = 0;
    for (const SCase& c : cases) {
        SCOPED_TRACE(number++);
        EXPECT_EQ(c.metaData.numberOfElements, c.elements);
        EXPECT_EQ(c.metaData.unitsType, 7u);
        const std::size_t stored =
            c.metaData.dataType == eBooleanProperty ? c.metaData.initialFlags.size() : c.metaData.initialValues.size();
        EXPECT_EQ(stored, c.elements);
        for (unsigned int element = 0; element < c.firstValues.size(); ++element)
            EXPECT_EQ(c.metaData.initialValue(element), c.firstValues[element]) << element;
        EXPECT_EQ(c.metaData.initialValue(c.elements), 0.0);
    }
    const CMetaData earlier("a", 0, 1, 0);
    EXPECT_LT(earlier.id, CMetaData("a", 0, 1, 0).id);
    EXPECT_TRUE(CMetaData("a", 0, 2, 3).sameShape(CMetaData("b", 0, 2, 3, std::vector<double>{9, 9})));
    for (const CMetaData& other : {CMetaData("a", 1, 2, 3), CMetaData("a", 0, 1, 3), CMetaData("a", 0, 2, 4)})
        EXPECT_FALSE(CMetaData("a", 0, 2, 3).sameShape(other));
}

TEST(PropertyManager, takesNamesOfLettersBracketsBlanksAndHyphens)
{
    const std::pair<const char*, bool> names[] = {
        {"Temperature", true},
        {"a", true},
        {"Heat Flux (W-m)", true},
        {" ", true},
        {"-()", true},
        {"", false},
        {"Flux2", false},
        {"a_b", false},
        {"a.b", false},
        {"a\n", false},
        {"a\t", false},
        {"W/m", false},
        {"[a]", false},
        {"\xc3\xa4rger", false}, // a letter, but none of A to Z
        {"@", false},
        {"`", false},
        {"{", false}, // next to Z, a and z
    };
    CCustomPropertyManager manager("Particle Properties", eParticleOwner);
    for (const auto& [name, valid] : names) {
        EXPECT_EQ(CCustomPropertyManager::isValidName(name), valid) << name;
        EXPECT_EQ(add(manager, name), valid) << name;
        EXPECT_FALSE(add(manager, name)) << "in use or not valid: " << name;
    }
    EXPECT_TRUE(add(manager, "temperature")) << "capitals tell names apart";
    EXPECT_FALSE(CCustomPropertyManager::isValidName(std::string("a\0b", 3)));
    std::unique_ptr<CMetaData> none;
    EXPECT_FALSE(manager.addProperty(none));
}

TEST(PropertyManager, takesOverWhatItAddsAndLeavesWhatItRefuses)
{
    CCustomPropertyManager manager("Contact Properties", eContactOwner);
    auto metaData = std::make_unique<CMetaData>("Wear", 0u, 1u, 0u);
    metaData->referenceCount = 5;
    const CMetaData* const object = metaData.get();
    EXPECT_FALSE(manager.isModified());
    EXPECT_TRUE(manager.addProperty(metaData));
    EXPECT_EQ(metaData, nullptr);
    EXPECT_EQ(object->referenceCount, 0u);
    EXPECT_TRUE(manager.isModified());
    metaData = std::make_unique<CMetaData>("Wear", 0u, 1u, 0u);
    EXPECT_FALSE(manager.addProperty(metaData));
    EXPECT_NE(metaData, nullptr);

    EXPECT_EQ(manager.indexOf("Wear"), 0u);
    EXPECT_EQ(manager.indexOf("wear"), 0xFFFFFFFFu);
    EXPECT_EQ(manager.property("Wear"), object);
    EXPECT_EQ(manager.property(0u), object);
    EXPECT_EQ(manager.property(1u), nullptr);
    EXPECT_EQ(manager.property("wear"), nullptr);
    EXPECT_EQ(manager.finalizedCount(), 0u);
    for (const auto& [last, finalized] :
         {std::pair<int, unsigned int>{0, 1}, {-1, 0}, {5, 1}, {-9, 0}, {std::numeric_limits<int>::max(), 1}}) {
        manager.lastFinalisedPropertyIndex = last; // never more than there are
        EXPECT_EQ(manager.finalizedCount(), finalized) << last;
    }
}

TEST(PropertyManager, referencesNeverFallBelowNone)
{
    CCustomPropertyManager manager("Particle Properties", eParticleOwner);
    add(manager, "Charge");
    const CMetaData& charge = *manager.property("Charge");
    struct SCase
    {
        void (CCustomPropertyManager::*operation)(const std::string&);
        const char* name;
        unsigned int count;
        bool marksModified;
    };
    const SCase cases[] = {
        {&CCustomPropertyManager::addReference, "Charge", 1, true},
        {&CCustomPropertyManager::addReference, "Charge", 2, true},
        {&CCustomPropertyManager::addReference, "charge", 2, false},
        {&CCustomPropertyManager::releaseReference, "charge", 2, false},
        {&CCustomPropertyManager::releaseReference, "Charge", 1, true},
        {&CCustomPropertyManager::releaseReference, "Charge", 0, true},
        {&CCustomPropertyManager::releaseReference, "Charge", 0, true},
    };
    for (const SCase& c : cases) {
        manager.setModified(false);
        (manager.*c.operation)(c.name);
        EXPECT_EQ(charge.referenceCount, c.count);
        EXPECT_EQ(manager.isModified(), c.marksModified);
    }
    EXPECT_EQ(manager.propertyCount(), 1u); // without references it stays
}

TEST(PropertyManager, listenersHearOfEachChange)
{
    CCustomPropertyManager manager("Particle Properties", eParticleOwner);
    CRecordingListener listener;
    manager.addListener(&listener);
    manager.addListener(&listener); // once is enough
    add(manager, "a");
    add(manager, "a"); // refused: nothing to hear
    add(manager, "b");
    manager.notifyChanged(7);
    EXPECT_EQ(listener.heard, "added(1) added(2) changed(Particle Properties, 7) ");

    listener.heard.clear();
    manager.removeListener(&listener); // no property is finalized: it goes in silence
    manager.lastFinalisedPropertyIndex = 0;
    manager.notifyChanged(1);
    manager.removeListener(&listener); // isn't there any more
    EXPECT_EQ(listener.heard, "");
    manager.addListener(&listener);
    manager.removeListener(&listener);
    EXPECT_EQ(listener.heard, "changed(Particle Properties, 0) ");

    for (const bool notify : {true, false}) {
        add(manager, "c");
        manager.lastFinalisedPropertyIndex = 0;
        manager.addListener(&listener);
        listener.heard.clear();
        manager.clear(notify);
        EXPECT_EQ(listener.heard, "changed(Particle Properties, 0) ");
        EXPECT_EQ(manager.isModified(), notify);
        EXPECT_EQ(manager.propertyCount(), 0u);
        EXPECT_EQ(manager.lastFinalisedPropertyIndex, -1);
    }
    manager.removeListener(&listener);
}

class CThrowingListener : public IPropertyListener
{
public:
    void managerChanged(CCustomPropertyManager&, int) override { throw std::bad_alloc(); }
    void propertyAdded(CCustomPropertyManager&) override {}
};

TEST(PropertyManager, aListenerThatThrowsDoesNotKeepTheLock)
{
    CCustomPropertyManager manager("Particle Properties", eParticleOwner);
    CThrowingListener throwing;
    manager.addListener(&throwing);
    EXPECT_THROW(manager.notifyChanged(0), std::bad_alloc);
    manager.removeListener(&throwing); // would wait for ever
    EXPECT_NO_THROW(manager.notifyChanged(0));
}

// ---------------------------------------------------------------- the payload of a settings block

/// Bytes on paper; blanks between them are passed over.
static QByteArray bytes(const char* hex) { return QByteArray::fromHex(hex); }

struct SPayloadRead
{
    bool result;
    qint64 consumed;
};

static SPayloadRead readPayload(CCustomPropertyManager& manager, QByteArray payload,
                                quint32 version = currentFileVersion())
{
    QBuffer buffer(&payload);
    buffer.open(QIODevice::ReadOnly);
    CVersionedStream stream(&buffer);
    stream.setFileVersion(version);
    const bool result = manager.read(stream, nullptr);
    return {result, buffer.pos()};
}

// Two properties, the first of them finalized: a double property of two elements 1.0 and -2.0 in units 20, and a
// boolean one of three. Texts are a count of bytes and UTF-16, numbers big-endian.
static const char* const twoProperties = "00000000 00000002"                 // last finalized, count
                                         "00000006 004100200042"             // "A B"
                                         "00000000 00000002 00000014"        // double, two, 20
                                         "3ff0000000000000 c000000000000000" // 1, -2
                                         "00000004 00280029"                 // "()"
                                         "00000001 00000003 00000000"        // boolean, three, 0
                                         "00000001 00000000 00000001";

TEST(PropertyPayload, isWrittenAsTheFileHoldsIt)
{
    CCustomPropertyManager manager("Particle Properties", eParticleOwner);
    auto first = std::make_unique<CMetaData>("A B", 0u, 2u, 20u, std::vector<double>{1.0, -2.0});
    auto second = std::make_unique<CMetaData>("()", 1u, 3u, 0u, std::vector<bool>{true, false, true});
    manager.addProperty(first);
    manager.addProperty(second);
    manager.lastFinalisedPropertyIndex = 0;
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    CVersionedStream stream(&buffer);
    EXPECT_TRUE(manager.write(stream, nullptr));
    EXPECT_EQ(buffer.data().toHex().toStdString(), bytes(twoProperties).toHex().toStdString());
    EXPECT_FALSE(manager.isModified());

    QByteArray unwritable;
    QBuffer readOnly(&unwritable);
    readOnly.open(QIODevice::ReadOnly);
    CVersionedStream nowhere(&readOnly);
    manager.setModified(true);
    EXPECT_FALSE(manager.write(nowhere, nullptr));
    EXPECT_TRUE(manager.isModified());
}

TEST(PropertyPayload, isReadToItsLastByteAndNoFurther)
{
    CCustomPropertyManager manager("Particle Properties", eParticleOwner);
    CRecordingListener listener;
    manager.addListener(&listener);
    const QByteArray payload = bytes(twoProperties);
    const SPayloadRead read = readPayload(manager, payload + QByteArray(64, '\xa5'));
    EXPECT_TRUE(read.result);
    EXPECT_EQ(read.consumed, payload.size());
    EXPECT_FALSE(manager.isModified());
    EXPECT_EQ(listener.heard, "added(1) added(2) changed(Particle Properties, 0) ");
    manager.removeListener(&listener);

    ASSERT_EQ(manager.propertyCount(), 2u);
    EXPECT_EQ(manager.finalizedCount(), 1u);
    const CMetaData& first = *manager.property("A B");
    EXPECT_EQ(first.dataType, 0u);
    EXPECT_EQ(first.unitsType, 20u);
    EXPECT_EQ(first.initialValues, (std::vector<double>{1.0, -2.0}));
    const CMetaData& second = *manager.property("()");
    EXPECT_EQ(second.dataType, 1u);
    EXPECT_EQ(second.initialFlags, (std::vector<bool>{true, false, true}));
}

TEST(PropertyPayload, versionsBelow23HoldOneDoubleForAllElements)
{
    struct SCase
    {
        quint32 version;
        const char* values;
        std::vector<double> initial;
    };
    const SCase cases[] = {
        {makeVersion(22, 255, 255), "4008000000000000", {3, 3}},
        {makeVersion(3, 0, 16), "4008000000000000", {3, 3}}, // old numbering: 3 counts as 20
        {makeVersion(23, 0, 0), "4008000000000000 4010000000000000", {3, 4}},
        {makeVersion(30, 0, 20), "4008000000000000 4010000000000000", {3, 4}},
    };
    for (const SCase& c : cases) {
        SCOPED_TRACE(c.version);
        const QByteArray head = bytes("ffffffff 00000001 00000002 0041 00000000 00000002 00000000");
        CCustomPropertyManager manager("Particle Properties", eParticleOwner);
        const SPayloadRead read = readPayload(manager, head + bytes(c.values) + QByteArray(64, '\xa5'), c.version);
        EXPECT_TRUE(read.result);
        EXPECT_EQ(read.consumed, (head + bytes(c.values)).size());
        ASSERT_EQ(manager.propertyCount(), 1u);
        EXPECT_EQ(manager.property(0u)->initialValues, c.initial);
    }
    // A flag is stored as a double as well, whatever the data type says.
    CCustomPropertyManager manager("Particle Properties", eParticleOwner);
    const QByteArray flags = bytes("ffffffff 00000001 00000002 0041 00000001 00000002 00000000 3ff0000000000000");
    EXPECT_EQ(readPayload(manager, flags, makeVersion(22, 0, 0)).consumed, flags.size());
    EXPECT_EQ(manager.property(0u)->initialFlags, (std::vector<bool>{true, true}));
}

TEST(PropertyPayload, tooManyElementsAreCutAfterTheirNumberWasRead)
{
    for (const char* elements : {"000003e8", "00000101", "ffffffff"}) { // 1000, 257, -1
        const QByteArray head = bytes("ffffffff 00000001 00000002 0041 00000000") + bytes(elements) + bytes("00000000");
        CCustomPropertyManager manager("Particle Properties", eParticleOwner);
        const SPayloadRead read = readPayload(manager, head + QByteArray(300 * 8, '\0'));
        EXPECT_TRUE(read.result);
        EXPECT_EQ(read.consumed, head.size() + 256 * 8);
        EXPECT_EQ(manager.property(0u)->numberOfElements, 256u);
    }
}

TEST(PropertyPayload, tentativePropertiesHaveNoValuesAnywhere)
{
    CCustomPropertyManager manager("Particle Properties", eParticleOwner);
    {
        CCustomPropertyData data(&manager);
        data.resize(3);
        CRecordingListener listener;
        manager.addListener(&listener);
        EXPECT_TRUE(readPayload(manager, bytes("ffffffff") + bytes(twoProperties).mid(4)).result);
        EXPECT_EQ(manager.propertyCount(), 2u);
        EXPECT_EQ(manager.finalizedCount(), 0u);
        EXPECT_TRUE(data.lists.empty());
        EXPECT_EQ(listener.heard, "added(1) added(2) "); // nothing is finalized: no change of values to report
        manager.removeListener(&listener);
        manager.clear(false);
        EXPECT_TRUE(readPayload(manager, bytes(twoProperties)).result);
        ASSERT_EQ(data.lists.size(), 1u);
        EXPECT_EQ(data.lists[0]->values, (std::vector<double>{1, -2, 1, -2, 1, -2}));
    }
    EXPECT_TRUE(readPayload(manager, bytes("ffffffff 00000000")).result);
}

TEST(PropertyPayload, damagedOnesAreRefusedWholeAndReported)
{
    struct SCase
    {
        QByteArray payload;
        const char* told;
    };
    const QByteArray good = bytes(twoProperties);
    const QByteArray property = good.mid(8, 38); // "A B"
    const SCase cases[] = {
        {bytes("00000000 00000002") + property + property, "the property name \"A B\" is there twice"},
        {bytes("ffffffff 00000001 00000004 00410032 00000000 00000000 00000000"),
         "the property name \"A2\" isn't valid"},
        {bytes("ffffffff 00000001 ffffffff 00000000 00000001 00000000 0000000000000000"),
         "the property name \"\" isn't valid"},
        {bytes("ffffffff 00000001 00000002 0041 00000002 00000000 00000000 0000000000000000"),
         "property \"A\" is of the unknown data type 2"},
        {bytes("00000000 7fffffff") + property, "2147483647 properties announced, 38 bytes follow"},
        {bytes("00000000 ffffffff") + property, "-1 properties announced, 38 bytes follow"},
        {bytes("00000000 00000003") + property, "3 properties announced, 38 bytes follow"},
        {bytes("00000000 00000002") + property, "the block ends in a property"},
        {bytes("00000000 00000001 7ffffffe") + QByteArray(64, 'A'), "the block ends in a property"},
        {QByteArray(), "the block ends before the number of properties"},
    };
    for (const SCase& c : cases) {
        CCustomPropertyManager manager("Contact Properties", eContactOwner);
        CLogCapture log;
        EXPECT_FALSE(readPayload(manager, c.payload).result) << c.told;
        EXPECT_EQ(log.text(), "WARNING Settings: Contact Properties not read: " + std::string(c.told) + ".\n");
        EXPECT_EQ(manager.propertyCount(), 0u);
        EXPECT_EQ(manager.lastFinalisedPropertyIndex, -1);
        EXPECT_TRUE(manager.isModified()); // what the file holds isn't what is here
    }
    // Every prefix ends in the same way.
    for (int length = 0; length < good.size(); ++length) {
        CCustomPropertyManager manager("Contact Properties", eContactOwner);
        CLogCapture log;
        EXPECT_FALSE(readPayload(manager, good.left(length)).result) << length;
        EXPECT_EQ(manager.propertyCount(), 0u) << length;
        EXPECT_EQ(log.count(), 1u) << length;
    }
}

TEST(PropertyPayload, aFinalizedIndexOutsideOfTheSequenceIsRepaired)
{
    for (const auto& [stored, taken] :
         {std::pair<const char*, int>{"00000002", 1}, {"7fffffff", 1}, {"fffffffe", -1}, {"80000000", -1}}) {
        CCustomPropertyManager manager("Contact Properties", eContactOwner);
        CLogCapture log;
        EXPECT_TRUE(readPayload(manager, bytes(stored) + bytes(twoProperties).mid(4)).result);
        EXPECT_EQ(manager.lastFinalisedPropertyIndex, taken);
        EXPECT_EQ(log.count(), 1u) << stored;
    }
}

} // namespace NBrenmark
