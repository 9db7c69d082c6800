// The pairs of materials by key.
#include "materials/interactions.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

void CInteraction::read(IFileVisitorReader& v) { v.readInteraction(*this); }

void CInteraction::write(IFileVisitorWriter& v) const { v.writeInteraction(*this); }

void InteractionMap::read(IFileVisitorReader& v) { v.readInteractionMap(*this); }

void InteractionMap::write(IFileVisitorWriter& v) const { v.writeInteractionMap(*this); }

InteractionMap::~InteractionMap() { qDeleteAll(entries); }

void InteractionMap::set(const QString& a, const QString& b, CInteraction* interaction)
{
    setByKey(pairKey(a, b), interaction);
}

void InteractionMap::setByKey(const QString& key, CInteraction* interaction)
{
    CInteraction*& entry = entries[key];
    if (entry != interaction)
        delete entry;
    entry = interaction;
}

CInteraction* InteractionMap::find(const QString& a, const QString& b) const
{
    return entries.value(pairKey(a, b), nullptr);
}

QStringList InteractionMap::partnersOf(const QString& material) const
{
    QStringList partners;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        const QString first = firstName(entry.key());
        const QString second = secondName(entry.key());
        if (first == material)
            partners.append(second);
        else if (second == material)
            partners.append(first);
    }
    return partners;
}

void InteractionMap::clear()
{
    qDeleteAll(entries);
    entries.clear();
}

} // namespace NBrenmark
