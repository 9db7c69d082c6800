#include "analysis/display_options.h"

#include "analysis/entry_form.h"

#include <QDataStream>

#include <utility>

namespace NBrenmark {

void CDisplayOptions::form(IEntryForm& f)
{
    f.marker("display options", recordWord);
    // The record has one layout, whatever the file's version says of others.
    const quint32 fileVersion = std::exchange(f.version, currentFileVersion());
    f.colour("colour", colour);
    f.flag("active", active);
    f.real("transparency", transparency);
    f.integer("polygonMode", polygonMode);
    f.text("attributeName", attributeName);
    f.text("componentName", componentName);
    f.flag("colourByAttribute", colourByAttribute);
    f.flag("smooth", smooth);
    f.flag("highlightAll", highlightAll);
    f.flag("useForColouring", useForColouring);
    f.flag("hideOutOfBounds", hideOutOfBounds);
    f.flag("useForRepresentation", useForRepresentation);
    f.text("contactAttribute", contactAttribute);
    f.text("bondAttribute", bondAttribute);
    f.real("bondDistanceThreshold", bondDistanceThreshold);
    f.text("takeColouringFrom", takeColouringFrom);
    f.text("type", type);
    f.flag("useLogarithmicScaling", useLogarithmicScaling);
    f.text("texturePath", texturePath);
    f.part("scale", scale);
    f.version = fileVersion;
}

bool CDisplayOptions::write(QDataStream& stream, IProgressController*)
{
    COutEntryForm f(stream);
    form(f);
    return stream.status() == QDataStream::Ok;
}

bool CDisplayOptions::read(QDataStream& stream, IProgressController*)
{
    CInEntryForm f(stream);
    form(f);
    return true;
}

void CDisplayOptionManager::rename(const std::string& oldName, const std::string& newName)
{
    auto entry = byName.extract(oldName);
    if (entry.empty())
        return;
    byName.erase(newName);
    entry.key() = newName;
    byName.insert(std::move(entry));
}

CDisplayOptions& CDisplayOptionManager::options(const std::string& name)
{
    std::unique_ptr<CDisplayOptions>& entry = byName[name];
    if (entry == nullptr)
        entry = std::make_unique<CDisplayOptions>();
    return *entry;
}

} // namespace NBrenmark
