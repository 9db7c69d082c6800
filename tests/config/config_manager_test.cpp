// The tree of settings: what a key gives, what it makes, and who is asked to read it.

#include "config/config_manager.h"

#include <gtest/gtest.h>

namespace NBrenmark::NConfig {
namespace {

CKeyPath path(const char* text) { return CKeyPath::fromString(text); }

struct SPathCase
{
    const char* text;
    std::vector<std::string> elements;
    const char* written;
};

TEST(KeyPath, takesTheRunsBetweenColons)
{
    const SPathCase cases[] = {
        {"", {}, ""},
        {":", {}, ""},
        {"a", {"a"}, "a"},
        {"a:b:", {"a", "b"}, "a:b"},
        {"a::b", {"a", "b"}, "a:b"},
        {":a", {"a"}, "a"},
        {"a b:c=d", {"a b", "c=d"}, "a b:c=d"},
    };
    for (const SPathCase& c : cases) {
        EXPECT_EQ(path(c.text).elements(), c.elements) << c.text;
        EXPECT_EQ(path(c.text).toString(), c.written) << c.text;
    }
}

TEST(KeyPath, ordersElementByElementAndByUnsignedBytes)
{
    const CKeyPath ascending[] = {path(""),   path("A"), path("A:A"),     path("A:B"),
                                  path("A0"), path("B"), path("\xC3\xA9")};
    for (size_t i = 0; i < std::size(ascending); ++i)
        for (size_t j = 0; j < std::size(ascending); ++j)
            EXPECT_EQ(ascending[i] < ascending[j], i < j) << i << " " << j;
}

TEST(ConfigException, saysWhatAndWhere)
{
    EXPECT_STREQ(CConfigException(eValueOfDifferentType, path("a:b")).what(), "Value is of different type (Key: a:b)");
    EXPECT_STREQ(CConfigException(eKeyPathNotValid, CKeyPath()).what(), "Key path not valid (Key: )");
    EXPECT_STREQ(CConfigException(eValueInInvalidFormat, path("a"), "12x").what(),
                 "Value is in invalid format (Key: a Details: 12x)");
}

template <class TCall>
int codeOf(TCall&& call)
{
    try {
        call();
    }
    catch (const CConfigException& error) {
        return int(error.code());
    }
    return -1;
}

TEST(ConfigManager, createsWhatIsReadAndKeepsItsKind)
{
    CConfigManager manager;
    EXPECT_EQ(manager.value<int>(path("A:B"), 7), 7);
    EXPECT_EQ(manager.value<int>(path("A:B"), 9), 7);
    manager.value<int>(path("A:B")) = 11;
    EXPECT_EQ(std::any_cast<int>(manager.nodeValue(path("A:B"))), 11);
    EXPECT_EQ(codeOf([&] { manager.value<double>(path("A:B"), 1.0); }), int(eValueOfDifferentType));
    EXPECT_EQ(codeOf([&] { manager.value<unsigned int>(path("A:B")); }), int(eValueOfDifferentType));
    EXPECT_EQ(manager.value<int>(path("A:B")), 11);

    // "A" came into being on the way, without a value: the first who asks decides.
    EXPECT_FALSE(manager.nodeValue(path("A")).has_value());
    EXPECT_EQ(manager.value<std::string>(path("A"), "x"), "x");

    manager.clearValue(path("A"));
    EXPECT_EQ(manager.value<bool>(path("A")), false);
    EXPECT_EQ(manager.value<int>(path("A:B")), 11) << "children stay";
    manager.clearValue(path("NOBODY"));
    EXPECT_EQ(manager.findNode(path("NOBODY"), false), nullptr);
}

TEST(ConfigManager, valuesStartEmptyInEveryKind)
{
    CConfigManager manager;
    EXPECT_EQ(manager.value<double>(path("D")), 0.0);
    EXPECT_EQ(manager.value<char>(path("C")), '\0');
    EXPECT_EQ(manager.value<C3DPoint>(path("P")).y, 0.0);
    EXPECT_TRUE(manager.value<std::set<int>>(path("S")).empty());
    EXPECT_TRUE(manager.value<QString>(path("Q")).isEmpty());
}

TEST(ConfigManager, refusesPathsThatAddressNoValue)
{
    CConfigManager manager;
    std::vector<std::string> deep(greatestDepth + 1, "a");
    EXPECT_EQ(codeOf([&] { manager.value<int>(CKeyPath()); }), int(eKeyPathNotValid));
    EXPECT_EQ(codeOf([&] { manager.value<int>(CKeyPath(), 3); }), int(eKeyPathNotValid));
    EXPECT_EQ(codeOf([&] { manager.nodeValue(CKeyPath()); }), int(eKeyPathNotValid));
    EXPECT_EQ(codeOf([&] { manager.nodeValue(path("NOBODY")); }), int(eKeyPathNotValid));
    EXPECT_EQ(codeOf([&] { manager.value<int>(CKeyPath(deep)); }), int(eKeyPathNotValid));
    EXPECT_EQ(codeOf([&] { manager.createUniqueChild(CKeyPath(deep)); }), int(eKeyPathNotValid));
    deep.pop_back();
    EXPECT_EQ(manager.value<int>(CKeyPath(deep), 5), 5);
    EXPECT_NE(manager.findNode(CKeyPath(), false), nullptr) << "an empty path is the root";
}

TEST(ConfigManager, handlesAddFromTheirBase)
{
    CConfigManager manager;
    EXPECT_EQ(manager.handle(path("A"), false), nullptr);
    const auto handle = manager.handle(path("A:B"), true);
    ASSERT_NE(handle, nullptr);
    handle->value<int>(path("C"), 4);
    EXPECT_EQ(manager.value<int>(path("A:B:C")), 4);
    EXPECT_EQ(handle->basePath(), path("A:B"));
    EXPECT_EQ(codeOf([&] { manager.rootHandle()->value<int>(CKeyPath()); }), int(eKeyPathNotValid));
}

TEST(ConfigManager, numbersChildrenByTheFirstFreeNumber)
{
    CConfigManager manager;
    const char* const expected[] = {"L:00001", "L:00002", "L:00003"};
    for (const char* const key : expected)
        EXPECT_EQ(manager.createUniqueChild(path("L"))->basePath(), path(key));
    manager.removeKey(path("L:00001"));
    EXPECT_EQ(manager.createUniqueChild(path("L"))->basePath(), path("L:00001"));
    EXPECT_EQ(manager.childKeys(path("L")), (std::set<CKeyPath>{path("00001"), path("00002"), path("00003")}));
}

TEST(ConfigManager, removesAKeyWithAllBelowItAndMakesNothing)
{
    CConfigManager manager;
    manager.value<int>(path("A:B:C"), 1);
    manager.removeKey(path("X:Y"));
    manager.removeKey(CKeyPath());
    EXPECT_EQ(manager.childKeys(CKeyPath()), std::set<CKeyPath>{path("A")});
    manager.removeKey(path("A:B"));
    EXPECT_TRUE(manager.childKeys(path("A")).empty());
    EXPECT_TRUE(manager.childKeys(path("NOBODY")).empty());
}

TEST(ConfigManager, turnsVersionTextsIntoNumbers)
{
    EXPECT_EQ(versionNumber("30.0.2"), 0x1E0002u);
    EXPECT_EQ(versionNumber("24.0.0"), 0x180000u);
    EXPECT_EQ(versionNumber("1.2.3.4"), 0x010203u);
    EXPECT_EQ(versionNumber("7"), 0x070000u);
    EXPECT_EQ(versionNumber("30.999.99999999999999999999"), 0x1EFFFFu) << "no number reaches into its neighbour";
}

/// Counts what it is asked, and answers as it is told.
class CAskedObject : public IConfigurable
{
public:
    explicit CAskedObject(CConfigManager& manager) : registration(manager.registerConfigurable(*this)) {}

    bool loadConfiguration(CConfigManager& manager) override
    {
        ++loads;
        if (asksForWrongKind)
            manager.value<double>(path("INT KEY"), 1.0);
        return answer;
    }
    bool resetConfiguration(bool keepTree, CConfigManager& manager) override
    {
        ++resets;
        treeWasEmpty = manager.childKeys(CKeyPath()).empty();
        keptTree = keepTree;
        return answer;
    }

    int loads = 0;
    int resets = 0;
    bool answer = true;
    bool asksForWrongKind = false;
    bool treeWasEmpty = false;
    bool keptTree = false;

private:
    CConfigManager::CRegistration registration;
};

TEST(ConfigManager, asksEveryRegisteredObject)
{
    CConfigManager manager;
    EXPECT_TRUE(manager.loadAll());
    CAskedObject first(manager), second(manager);
    EXPECT_TRUE(manager.loadAll());
    first.answer = false;
    EXPECT_FALSE(manager.loadAll());
    EXPECT_EQ(first.loads + second.loads, 4) << "one that fails doesn't keep the others from reading";

    manager.value<int>(path("INT KEY"), 1);
    first.answer = true;
    first.asksForWrongKind = second.asksForWrongKind = true;
    EXPECT_FALSE(manager.loadAll());
    EXPECT_EQ(first.loads + second.loads, 5) << "a wrong kind ends the walk";
    EXPECT_EQ(manager.value<int>(path("INT KEY")), 1);

    EXPECT_TRUE(manager.resetAll(true));
    EXPECT_TRUE(first.treeWasEmpty && first.keptTree) << "the keys go even if the tree is to be kept";
    EXPECT_EQ(second.resets, 1);
}

TEST(ConfigManager, andItsObjectsMayEndInAnyOrder)
{
    auto manager = std::make_unique<CConfigManager>();
    CAskedObject outliving(*manager);
    {
        CAskedObject passing(*manager);
    }
    EXPECT_TRUE(manager->loadAll());
    EXPECT_EQ(outliving.loads, 1);
    manager.reset();
}

} // namespace
} // namespace NBrenmark::NConfig
