#pragma once
// Runs the legacy family's visitors on bytes in memory.

#include "core/deck/simulation_frame.h"
#include "io/dem/dem_writer.h"
#include "support/bytes.h"
#include "support/paths.h"
#include "support/properties.h"

#include <QBuffer>
#include <QFile>
#include <gtest/gtest.h>
#include <memory>

namespace NBrenmark {

/// A stream on bytes of its own.
class CByteStream
{
public:
    explicit CByteStream(const CBytes& bytes = CBytes(), quint32 version = currentFileVersion()) : stream(&buffer)
    {
        buffer.setData(bytes.bytes());
        buffer.open(QIODevice::ReadWrite);
        stream.setFileVersion(version);
    }

    CBytes written() const { return CBytes(buffer.data()); }

private:
    QBuffer buffer;

public:
    CDemDataStream stream;
};

/// Reads an object by a visitor. \return the bytes that were consumed
template <class TReader, class TObject>
qint64 consumedBy(TObject& object, const CBytes& bytes, quint32 version = currentFileVersion())
{
    CByteStream source(bytes, version);
    TReader reader(source.stream);
    object.read(reader);
    return source.stream.position();
}

/// What a visitor writes of an object.
template <class TWriter, class TObject>
CBytes writtenBy(TObject& object, const SSaveOptions& options = SSaveOptions())
{
    CByteStream target;
    target.stream.options = options;
    TWriter writer(target.stream);
    object.write(writer);
    return target.written();
}

/// Expects that no prefix of some bytes can be read. \param make  gives the object, which is read as one of TReader does
template <class TReader, class TMake>
void expectEveryPrefixToFail(const CBytes& bytes, TMake&& make, quint32 version = currentFileVersion(), qint64 step = 1)
{
    for (qint64 cut = 0; cut < bytes.size(); cut += step) {
        const auto object = make();
        EXPECT_THROW(consumedBy<TReader>(*object, bytes.first(cut), version), std::exception)
            << "cut at " << cut << " of " << bytes.size();
    }
}

/// Words of the worst kind for a count: too many of anything, many, none, and the front of -1.0.
constexpr quint32 worstWords[] = {0x7FFFFFFFu, 0x00100000u, 0xFFFFFFFFu, 0xBFF00000u};

/// Lays such words over every place of some bytes, each of which is refused then or a number like any other.
/// \param check  is given what was read, if only in part
template <class TReader, class TMake, class TCheck>
void damageEverywhere(const CBytes& bytes, TMake&& make, TCheck&& check, qint64 from = 0, qint64 step = 1)
{
    for (const quint32 word : worstWords)
        for (qint64 at = from; at + 4 <= bytes.size(); at += step) {
            const auto object = make();
            try {
                consumedBy<TReader>(*object, bytes.with(at, CBytes().u32(word)), makeVersion(27, 0, 3));
            }
            catch (const std::exception&) {
            }
            check(*object);
        }
}

/// A frame with property managers of its own.
class COwnFrame
{
public:
    COwnFrame() : frame(SPropertyManagers{&particle, &contact, &geometry, &simulation}) {}

    CCustomPropertyManager particle{"Particle Properties", eParticleOwner};
    CCustomPropertyManager contact{"Contact Properties", eContactOwner};
    CCustomPropertyManager geometry{"Geometry Properties", eGeometryOwner};
    CCustomPropertyManager simulation{"Simulation Properties", eSimulationOwner};
    SSimulationFrame frame;
};

/// Parts of new frames, which live as long as those.
inline std::shared_ptr<CCreatorData> newCreator()
{
    const auto own = std::make_shared<COwnFrame>();
    return {own, &own->frame.creator};
}
inline std::shared_ptr<CTimestepData> newTimestep()
{
    const auto own = std::make_shared<COwnFrame>();
    return {own, &own->frame.timestep};
}
inline std::shared_ptr<GeometryGroups> newGroups()
{
    const auto own = std::make_shared<COwnFrame>();
    return {own, &own->frame.creator.geometryGroups};
}

/// The frame of a sample deck, filled from its file without a manager.
class CSampleDeck : public COwnFrame
{
public:
    static constexpr qint64 creatorAt = 32;

    explicit CSampleDeck(const char* fileName) : file(QString::fromStdString(sampleDeck(fileName)))
    {
        if (!file.open(QIODevice::ReadOnly))
            throw std::runtime_error("no sample deck");
    }

    /// \return the byte after the block
    qint64 readCreator()
    {
        file.seek(creatorAt);
        CDemDataStream stream(&file);
        QString name;
        stream >> name;
        CDemCreatorDataReader reader(stream);
        frame.creator.read(reader);
        return stream.position();
    }

    qint64 readTimestep(qint64 at)
    {
        file.seek(at);
        CDemDataStream stream(&file);
        QString name;
        quint32 segment = 1;
        quint64 offset = 0;
        stream >> name >> segment >> offset;
        if (name != "class CTimestepData64" || offset != quint64(creatorAt))
            throw std::runtime_error("no timestep at that byte");
        CDemTimestepDataReader reader(stream);
        frame.timestep.read(reader);
        return stream.position();
    }

private:
    QFile file;
};

} // namespace NBrenmark
