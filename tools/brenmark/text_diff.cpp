#include "brenmark/text_diff.h"

#include "brenmark/units_text.h"

#include <algorithm>
#include <cctype>
#include <memory>
#include <utility>

namespace NBrenmark {

namespace {

const std::string settingsRoot = "deck/settings/";

bool isNumber(const std::string& name)
{
    return !name.empty() && std::all_of(name.begin(), name.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

std::string joined(const std::string& path, const std::string& name) { return path.empty() ? name : path + '/' + name; }

struct SNode
{
    const std::string* value = nullptr;
    std::vector<std::string> names; ///< of the children, in the order of the text
    std::map<std::string, SNode> children;

    const SNode* find(const std::string& name) const
    {
        const auto child = children.find(name);
        return child == children.end() ? nullptr : &child->second;
    }
    /// The value of a child, or an empty text.
    std::string valueOf(const std::string& name) const
    {
        const SNode* const child = find(name);
        return child != nullptr && child->value != nullptr ? *child->value : std::string();
    }
    bool isNumbered() const { return std::all_of(names.begin(), names.end(), isNumber); }
};

SNode treeOf(const TextLines& lines, const std::string& root)
{
    SNode tree;
    for (const auto& [path, value] : lines) {
        SNode* node = &tree;
        for (size_t begin = root.size() + 1; begin <= path.size();) {
            const size_t end = std::min(path.find('/', begin), path.size());
            const std::string name = path.substr(begin, end - begin);
            const auto [child, isNew] = node->children.try_emplace(name);
            if (isNew)
                node->names.push_back(name);
            node = &child->second;
            begin = end + 1;
        }
        node->value = &value;
    }
    return tree;
}

// ---------------------------------------------------------------- what is alike

/// All values below a node, by path; its own name isn't one of them.
void flatten(const SNode& node, const std::string& path, std::map<std::string, std::string>& values)
{
    if (node.value != nullptr)
        values.emplace(path, *node.value);
    for (const auto& [name, child] : node.children)
        if (path.size() + name.size() > 0 && !(path.empty() && (name == "name" || name == "index")))
            flatten(child, joined(path, name), values);
}

/// The part of the values of two nodes that is the same, 0 to 1.
double likeness(const SNode& a, const SNode& b)
{
    std::map<std::string, std::string> first, second;
    flatten(a, std::string(), first);
    flatten(b, std::string(), second);
    const auto same = std::count_if(first.begin(), first.end(), [&](const auto& entry) {
        const auto found = second.find(entry.first);
        return found != second.end() && found->second == entry.second;
    });
    return double(same) / double(std::max<size_t>({first.size(), second.size(), 1}));
}

/// "f64[60,3]" of an array's line; empty for other lines.
std::string shapeOf(const std::string& value)
{
    const size_t end = value.find(']');
    const bool isArray = value.size() > 4 && value[3] == '[' && end != std::string::npos &&
                         (value.compare(0, 3, "f64") == 0 || value.compare(1, 2, "32") == 0);
    return isArray ? value.substr(0, end) : std::string();
}

/// Kind and width, without the number of rows.
std::string rowFormOf(const std::string& shape)
{
    const size_t comma = shape.find(',');
    return shape.substr(0, 3) + (comma == std::string::npos ? std::string() : shape.substr(comma));
}

std::string rowsOf(const std::string& shape)
{
    return shape.empty() ? std::string() : shape.substr(4, shape.find_first_of(",]", 4) - 4);
}

// ---------------------------------------------------------------- the comparison

/// Lines that say how long the arrays beside them are.
bool isCount(const std::string& name) { return name == "rows" || name == "slots" || name == "records"; }

/// Lines that follow from others in their node.
bool isDerived(const std::string& name)
{
    static const std::set<std::string> derived{"count", "particles", "maxId", "lastFinalisedPropertyIndex",
                                               "timesteps"};
    return derived.count(name) > 0;
}

class CComparison
{
public:
    CComparison(const std::string& root, const SConsequences& known) : root(root), known(known) {}

    /// \param isRenamed      the name is reported already
    /// \param isOrderOther   and so is what moved its place in the list
    void node(const std::string& path, const SNode& a, const SNode& b, bool isRenamed = false,
              bool isOrderOther = false)
    {
        if (a.value != nullptr && b.value != nullptr)
            values(path, *a.value, *b.value);
        if (reportsOtherNumber(path, a, b) || reportsOtherKind(path, a, b))
            return;
        const std::pair<std::string, std::string> outerLengths = lengths;
        const size_t before = found.size();
        reportCounts(path, a, b);

        std::vector<std::string> missing, extra;
        for (const std::string& name : a.names)
            if (b.find(name) == nullptr)
                missing.push_back(name);
        for (const std::string& name : b.names)
            if (a.find(name) == nullptr)
                extra.push_back(name);
        const bool isOther = !missing.empty() || !extra.empty();
        const std::map<std::string, std::string> renamed = renamedAmong(path, a, b, missing, extra);
        if (missing.size() > 1 && missing.size() == a.names.size() && extra.empty()) {
            add(eMissing, path,
                "all " + countText(missing.size(), "entry", "entries") + " missing in the converted deck");
            missing.clear();
        }
        for (const std::string& name : a.names) {
            const SNode& child = a.children.at(name);
            if (const auto other = renamed.find(name); other != renamed.end())
                node(joined(path, name), child, b.children.at(other->second), true, true);
            else if (std::count(missing.begin(), missing.end(), name) > 0)
                reportOneSided(eMissing, joined(path, name), child);
            else if (const SNode* const same = b.find(name); same != nullptr && !isLater(name, child) &&
                                                             !isCount(name) && !(isOrderOther && name == "index") &&
                                                             !(isRenamed && name == "name"))
                node(joined(path, name), child, *same, false, isOther);
        }
        for (const std::string& name : extra)
            reportOneSided(eExtra, joined(path, name), b.children.at(name));
        reportDerived(path, a, b, before);
        lengths = outerLengths;
    }

    std::vector<SDifference> found;

private:
    void add(EDifferenceKind kind, const std::string& path, const std::string& detail,
             const std::string& source = std::string(), const std::string& converted = std::string())
    {
        found.push_back({kind, joined(root, path), detail, source, converted});
    }

    /// By the path of the first node with a value or several children.
    void reportOneSided(EDifferenceKind kind, std::string path, const SNode& node)
    {
        const SNode* last = &node;
        while (last->value == nullptr && last->names.size() == 1) {
            path = joined(path, last->names[0]);
            last = &last->children.at(last->names[0]);
        }
        const std::string value = last->value != nullptr ? *last->value : std::string();
        if (kind == eMissing)
            add(kind, path, "missing in the converted deck", value);
        else
            add(kind, path, "only in the converted deck", std::string(), value);
    }

    void values(const std::string& path, const std::string& a, const std::string& b)
    {
        if (a == b)
            return;
        const std::string first = shapeOf(a), second = shapeOf(b);
        if (first.empty() || second.empty() || rowFormOf(first) != rowFormOf(second)) {
            add(eOtherValue, path, "another value", a, b);
            return;
        }
        const std::pair<std::string, std::string> rows{rowsOf(first), rowsOf(second)};
        if (rows.first != rows.second && rows == lengths)
            return; // as its node says
        add(eOtherArray, path, rows.first == rows.second ? "other values" : otherNumber("rows", rows), a, b);
    }

    static std::string otherNumber(const std::string& plural, const std::pair<std::string, std::string>& numbers)
    {
        return plural + ": " + numbers.first + " in the source, " + numbers.second + " in the converted deck";
    }

    /// Entries that are told apart by their place alone.
    bool reportsOtherNumber(const std::string& path, const SNode& a, const SNode& b)
    {
        const bool isList = a.isNumbered() && b.isNumbered() && a.names.size() != b.names.size();
        if (!isList)
            return false;
        size_t same = 0;
        while (same < std::min(a.names.size(), b.names.size()) &&
               likeness(a.children.at(a.names[same]), b.children.at(b.names[same])) == 1.0)
            ++same;
        add(eOtherCount, path,
            otherNumber("entries", {std::to_string(a.names.size()), std::to_string(b.names.size())}) +
                "; they differ from entry " + std::to_string(same) + " on");
        return true;
    }

    /// Things of two kinds have nothing in common that could be compared.
    bool reportsOtherKind(const std::string& path, const SNode& a, const SNode& b)
    {
        const std::string first = a.valueOf("kind"), second = b.valueOf("kind");
        if (first == second)
            return false;
        add(eOtherValue, joined(path, "kind"), "another kind", first, second);
        return true;
    }

    void reportCounts(const std::string& path, const SNode& a, const SNode& b)
    {
        for (const std::string& name : a.names) {
            const std::pair<std::string, std::string> counts{a.valueOf(name), b.valueOf(name)};
            if (!isCount(name) || counts.first == counts.second || counts.second.empty())
                continue;
            if (counts != lengths)
                add(eOtherCount, path, otherNumber(name, counts), counts.first, counts.second);
            lengths = counts;
        }
    }

    /// Takes out of both lists what is known, and what has only another name; that is reported.
    /// \return old and new names
    std::map<std::string, std::string> renamedAmong(const std::string& path, const SNode& a, const SNode& b,
                                                    std::vector<std::string>& missing, std::vector<std::string>& extra)
    {
        std::map<std::string, std::string> renamed;
        const bool isProperties = path.substr(path.rfind('/') + 1) == "properties";
        const auto newNameOf = [&](const std::string& name) {
            const auto& names = isProperties ? known.renamedProperties : known.renamed;
            const auto entry = names.find(isProperties ? name : joined(path, name));
            return entry == names.end() ? std::string() : entry->second;
        };
        const auto isGone = [&](const std::string& name) {
            if (known.noProperties && (isProperties || name == "properties"))
                return true;
            return isProperties ? known.goneProperties.count(name) > 0 : known.gone.count(joined(path, name)) > 0;
        };
        const auto drop = [](std::vector<std::string>& names, const std::string& name) {
            names.erase(std::remove(names.begin(), names.end(), name), names.end());
        };
        for (const std::string& name : std::vector<std::string>(missing)) {
            const std::string newName = newNameOf(name);
            if (!newName.empty() && std::count(extra.begin(), extra.end(), newName) > 0) {
                renamed[name] = newName;
                drop(extra, newName);
                drop(missing, name);
                continue;
            }
            if (isGone(name)) {
                drop(missing, name);
                continue;
            }
            constexpr size_t mostCandidates = 100; // beyond, the time goes with their square
            if (missing.size() > mostCandidates || extra.size() > mostCandidates)
                continue;
            const auto best = std::max_element(extra.begin(), extra.end(), [&](const auto& first, const auto& second) {
                return likeness(a.children.at(name), b.children.at(first)) <
                       likeness(a.children.at(name), b.children.at(second));
            });
            constexpr double alike = 0.5;
            if (best == extra.end() || likeness(a.children.at(name), b.children.at(*best)) < alike)
                continue;
            add(eRenamed, joined(path, name), "renamed in the converted deck", name, *best);
            renamed[name] = *best;
            drop(missing, name);
            extra.erase(best);
        }
        for (const std::string& name : std::vector<std::string>(extra))
            if (isGone(name))
                drop(extra, name);
        return renamed;
    }

    static bool isLater(const std::string& name, const SNode& child)
    {
        return isDerived(name) || (name == "index" && !child.names.empty());
    }

    /// What follows from other lines is reported where none of these differs.
    void reportDerived(const std::string& path, const SNode& a, const SNode& b, size_t before)
    {
        for (const std::string& name : a.names) {
            const SNode* const other = b.find(name);
            if (other == nullptr || !isLater(name, a.children.at(name)))
                continue;
            if (isDerived(name)) {
                if (found.size() == before)
                    node(joined(path, name), a.children.at(name), *other);
                continue;
            }
            // The index of a timestep repeats what is in it.
            for (const std::string& entry : a.children.at(name).names)
                if (const SNode* const indexed = other->find(entry); indexed != nullptr)
                    if (a.valueOf(entry) == b.valueOf(entry))
                        node(joined(joined(path, name), entry), a.children.at(name).children.at(entry), *indexed);
        }
    }

    const std::string root;
    const SConsequences& known;
    std::pair<std::string, std::string> lengths; ///< other numbers of rows that were reported
};

} // namespace

bool SConsequences::isGeometryGone() const
{
    return std::any_of(gone.begin(), gone.end(), [](const std::string& path) {
        const std::string groups = "geometryGroups/";
        return path.compare(0, groups.size(), groups) == 0 && path.find('/', groups.size()) == std::string::npos;
    });
}

void SConsequences::note(const SDifference& difference, const std::string& root)
{
    const std::string& place = difference.place;
    if (place.compare(0, settingsRoot.size(), settingsRoot) == 0) {
        const size_t owner = place.find('/', settingsRoot.size());
        if (owner == std::string::npos || place.compare(owner - 10, 10, "Properties") != 0)
            return;
        const size_t end = std::min(place.find('/', owner + 1), place.size());
        const std::string name = place.substr(owner + 1, end - owner - 1);
        if (end == place.size() && difference.kind == eRenamed)
            renamedProperties[name] = difference.converted;
        else if (end == place.size() || place.compare(end, std::string::npos, "/numberOfElements") == 0)
            goneProperties.insert(name);
        return;
    }
    if (place.compare(0, root.size() + 1, root + '/') != 0)
        return;
    const std::string path = place.substr(root.size() + 1);
    if (difference.kind == eRenamed)
        renamed[path] = difference.converted;
    else if (difference.kind == eMissing || difference.kind == eExtra)
        gone.insert(path);
}

std::vector<SDifference> textDifferences(const TextLines& source, const TextLines& converted, const std::string& root,
                                         const SConsequences& known)
{
    const SNode a = treeOf(source, root);
    const SNode b = treeOf(converted, root);
    CComparison comparison(root, known);
    comparison.node(std::string(), a, b);
    return std::move(comparison.found);
}

} // namespace NBrenmark
