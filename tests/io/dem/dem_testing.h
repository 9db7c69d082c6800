#pragma once
// Runs the legacy family's visitors on bytes in memory.

#include "core/deck/simulation_frame.h"
#include "io/dem/dem_writer.h"
#include "support/bytes.h"
#include "support/paths.h"
#include "support/properties.h"

#include <QBuffer>
#include <QFile>

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

    /// \return the byte behind the block
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
