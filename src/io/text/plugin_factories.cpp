// The text of the list of plug-in factories, by name: their order is that of the file, which one family keeps and
// another doesn't.
#include "io/text/text_writer.h"
#include "model/factories/plugin_factory_list.h"

#include <algorithm>

namespace NBrenmark {

void CTextWriter::writePluginParticleFactoryList(const CPluginParticleFactoryList& factories)
{
    std::vector<SPluginFactoryEntry> entries = factories.entries();
    std::sort(entries.begin(), entries.end(), [](const SPluginFactoryEntry& a, const SPluginFactoryEntry& b) {
        return a.name != b.name ? a.name < b.name : a.library < b.library;
    });
    CListSegments segments;
    for (const SPluginFactoryEntry& entry : entries)
        out.group(segments.next(entry.name), [&] { out.value("library", entry.library); });
}

} // namespace NBrenmark
