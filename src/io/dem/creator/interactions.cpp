// Interactions of pairs of materials.
#include "materials/interactions.h"

#include "core/stop_flag.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "io/dem/repeated_names.h"

namespace NBrenmark {

static constexpr qint64 interactionBytes = 4 + 3 * 8; // with an empty key

template <class TForm, class TInteraction>
static void interactionForm(TForm&& f, TInteraction& interaction)
{
    f.f64(interaction.restitution);     // speed of parting to speed of approach
    f.f64(interaction.staticFriction);  // coefficient
    f.f64(interaction.rollingFriction); // coefficient
}
void CDemCreatorDataReader::readInteraction(CInteraction& interaction) { interactionForm(in(), interaction); }
void CDemCreatorDataWriter::writeInteraction(const CInteraction& interaction) { interactionForm(out(), interaction); }

void CDemCreatorDataReader::readInteractionMap(InteractionMap& interactions)
{
    CInForm f = in();
    const quint32 count = f.count("interaction", interactionBytes);
    for (quint32 i = 0; i < count; ++i) {
        leaveIfStopped();
        QString key;
        f.text(key); // the smaller of two material names, "~", the greater one
        auto interaction = std::make_unique<CInteraction>();
        interaction->read(*this);
        if (interactions.entries.contains(key))
            reportRepeated("interaction", key);
        interactions.setByKey(key, interaction.release());
    }
}

void CDemCreatorDataWriter::writeInteractionMap(const InteractionMap& interactions)
{
    COutForm f = out();
    f.length("interaction", interactionBytes, interactions.entries);
    for (auto i = interactions.entries.constBegin(); i != interactions.entries.constEnd(); ++i) {
        f.text(i.key());
        i.value()->write(*this);
    }
}

} // namespace NBrenmark
