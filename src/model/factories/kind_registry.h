#pragma once
// Makes the objects of a polymorphic family by the words that files store beside them.

#include <QString>
#include <QStringList>
#include <map>
#include <memory>

namespace NBrenmark {

/// The kinds of one family. Each family's header names its registry and specialises instance().
template <class TFamily>
class CKindRegistry
{
public:
    static const CKindRegistry& instance();

    /// A new object with its defaults; null for a word that names no kind.
    std::unique_ptr<TFamily> create(const QString& word) const
    {
        const auto maker = makers.find(word);
        return maker != makers.end() ? maker->second() : nullptr;
    }
    bool knows(const QString& word) const { return makers.count(word) > 0; }
    /// In alphabetical order.
    QStringList words() const
    {
        QStringList words;
        for (const auto& [word, maker] : makers)
            words.append(word);
        return words;
    }

private:
    using Maker = std::unique_ptr<TFamily> (*)();

    /// \tparam TKinds  classes with a static member word
    template <class... TKinds>
    static CKindRegistry of()
    {
        CKindRegistry registry;
        (registry.makers.emplace(TKinds::word, []() -> std::unique_ptr<TFamily> { return std::make_unique<TKinds>(); }),
         ...);
        return registry;
    }

    std::map<QString, Maker> makers;
};

} // namespace NBrenmark
