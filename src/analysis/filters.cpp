// The records of filters, and how a word of the file becomes one.
#include "analysis/filters.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace NBrenmark::NSelection {

void CTypeFilter::form(IEntryForm& f)
{
    static constexpr std::array<const char*, 5> wordNames{"word1", "word2", "word3", "word4", "word5"};
    for (size_t i = 0; i < words.size(); ++i)
        f.i32(wordNames[i], words[i]);
    static constexpr std::array<const char*, 4> idNames{"ids1", "ids2", "ids3", "ids4"};
    for (size_t i = 0; i < idLists.size(); ++i)
        f.i32List(idNames[i], idLists[i]);
    static constexpr std::array<const char*, 2> typeNames{"types1", "types2"};
    for (size_t i = 0; i < typeLists.size(); ++i)
        f.i32List(typeNames[i], typeLists[i]);
}

std::unique_ptr<IFilter> CFilterList::clone() const
{
    auto copy = std::make_unique<CFilterList>();
    for (const std::unique_ptr<IFilter>& filter : filters)
        copy->filters.push_back(filter->clone());
    return copy;
}

bool CFilterList::isChanged() const
{
    return std::any_of(filters.begin(), filters.end(), [](const auto& filter) { return filter->isChanged(); });
}

void CFilterList::setChanged(bool changed)
{
    for (const std::unique_ptr<IFilter>& filter : filters)
        filter->setChanged(changed);
}

void CFilterList::form(IEntryForm& f)
{
    constexpr qint64 leastFilterBytes = 4;
    const quint32 count = f.count("filters", static_cast<quint32>(filters.size()), leastFilterBytes);
    if (f.isReading())
        filters.clear();
    for (quint32 i = 0; i < count; ++i)
        f.group(QString::number(i), [&] {
            QString word = f.isReading() ? QString() : filters[i]->typeId();
            f.text("class", word);
            if (f.isReading()) {
                std::unique_ptr<IFilter> filter = createFilter(word);
                if (filter == nullptr)
                    throw std::runtime_error("Could not create filter (Unknown ID): " + word.left(80).toStdString());
                ++f.wordsMet;
                filters.push_back(std::move(filter));
            }
            filters[i]->form(f);
        });
}

QStringList filterTypeIds() { return {CTypeFilter().typeId()}; }

std::unique_ptr<IFilter> createFilter(const QString& typeId)
{
    return typeId == CTypeFilter().typeId() ? std::make_unique<CTypeFilter>() : nullptr;
}

} // namespace NBrenmark::NSelection
