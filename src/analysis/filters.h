#pragma once
// What a selection leaves out of what it holds: filters, which are carried along.

#include "analysis/entry_form.h"

#include <QString>
#include <QStringList>

#include <array>
#include <memory>
#include <vector>

namespace NBrenmark::NSelection {

class IFilter : public IFormed
{
public:
    /// The text by which files name the class.
    virtual QString typeId() const = 0;
    virtual std::unique_ptr<IFilter> clone() const = 0;
    virtual bool isChanged() const = 0;
    virtual void setChanged(bool changed) = 0;
};

/// By the types of objects. What its numbers mean is known to who filters alone.
class CTypeFilter : public IFilter
{
public:
    QString typeId() const override { return QStringLiteral("Type Filter"); }
    std::unique_ptr<IFilter> clone() const override { return std::make_unique<CTypeFilter>(*this); }
    bool isChanged() const override { return changed; }
    void setChanged(bool value) override { changed = value; }
    void form(IEntryForm& f) override;

    std::array<qint32, 5> words{};
    std::array<std::vector<qint32>, 4> idLists;
    std::array<std::vector<qint32>, 2> typeLists;
    bool changed = false;
};

class CFilterList : public IFilter
{
public:
    QString typeId() const override { return QStringLiteral("Filter List"); }
    std::unique_ptr<IFilter> clone() const override;
    bool isChanged() const override;
    void setChanged(bool changed) override;
    void form(IEntryForm& f) override;

    std::vector<std::unique_ptr<IFilter>> filters; ///< in order
};

/// The words by which files name the classes.
QStringList filterTypeIds();

/// A filter by the word of its class; null for a word that names none.
std::unique_ptr<IFilter> createFilter(const QString& typeId);

} // namespace NBrenmark::NSelection
