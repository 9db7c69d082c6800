// Any bytes in place of a document. One that is read is written in a form that reads as the same.

#include "core/cause.h"
#include "core/deck/simulation_settings.h"
#include "core/log.h"
#include "core/memory_ceiling.h"
#include "model/creator_data.h"
#include "results/timestep_data.h"
#include "xml/document.h"

#include <QBuffer>

#include <cstdlib>

using namespace NBrenmark;

namespace {

/// A model of its own for each document: what is left of one must not help the next.
struct SDeck
{
    SDeck() { settings.follow(creator.physicsModels, creator.pluginFactories); }

    CSimulationSettingsAndData settings;
    CCreatorData creator{settings.propertyManagers()};
    CTimestepData timestep{settings.propertyManagers(), creator};
};

QByteArray written(SDeck& deck, bool isTimestep)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    CXmlIoOptions options;
    options.writeContacts = options.writeBonds = true;
    if (isTimestep)
        writeTimestep(buffer, deck.timestep, options);
    else
        writeDefinition(buffer, deck.creator, options);
    return buffer.data();
}

void read(SDeck& deck, QByteArray bytes, bool isTimestep)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    CXmlIoOptions options;
    if (isTimestep)
        readTimestep(buffer, deck.timestep, options);
    else
        readDefinition(buffer, deck.creator, options);
}

/// Without the lengths of turned lattices, of which each way takes a digit.
QByteArray withoutLattices(const QByteArray& document)
{
    QByteArray rest;
    for (const QByteArray& line : document.split('\n'))
        if (!line.contains("separation1"))
            rest += line + '\n';
    return rest;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    beginDeckMemory(size + 1);
    clearLogOnceMemory();
    const QByteArray document(reinterpret_cast<const char*>(bytes), static_cast<int>(size));
    SDeck deck;
    try {
        read(deck, document, false);
    }
    catch (const caused_error&) {
        SDeck other;
        try {
            read(other, document, true);
        }
        catch (const caused_error&) {
            return 0;
        }
        written(other, true);
        return 0;
    }
    const QByteArray first = written(deck, false);
    SDeck again;
    beginDeckMemory(static_cast<quint64>(first.size()));
    read(again, first, false);
    if (withoutLattices(written(again, false)) != withoutLattices(first))
        std::abort();
    return 0;
}
