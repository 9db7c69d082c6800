#pragma once
// Bytes in place of what a legacy deck stores.

#include "core/deck/simulation_frame.h"
#include "core/memory_ceiling.h"
#include "io/dem/dem_data_stream.h"
#include "io/dem/dem_writer.h"

#include <QBuffer>

#include <cstddef>
#include <cstdint>

namespace NBrenmark {

/// What a read may take here. Less than what the fuzzer itself is given.
constexpr quint64 fuzzedCeiling = quint64(128) << 20;

class CFuzzedStream
{
public:
    CFuzzedStream(const std::uint8_t* bytes, std::size_t size)
        : data(QByteArray::fromRawData(reinterpret_cast<const char*>(bytes), int(size))), buffer(&data), stream(&buffer)
    {
        buffer.open(QIODevice::ReadOnly);
        setMemoryCeiling(fuzzedCeiling);
        beginMemoryCount(eMemoryOfTimestep);
    }

private:
    QByteArray data;
    QBuffer buffer;

public:
    CDemDataStream stream;
};

/// A frame with property managers of its own, of which the particles' has a property.
class CFuzzedFrame
{
public:
    CFuzzedFrame() : frame(SPropertyManagers{&particle, &contact, &geometry, &simulation})
    {
        auto heat = std::make_unique<CCustomPropertyMetaData>("Heat", 0u, 2u, 0u, std::vector<double>{1.0, 2.0});
        particle.addProperty(heat);
        particle.lastFinalisedPropertyIndex = 0;
        particle.notifyChanged(0);
    }

    CCustomPropertyManager particle{"Particle Properties", eParticleOwner};
    CCustomPropertyManager contact{"Contact Properties", eContactOwner};
    CCustomPropertyManager geometry{"Geometry Properties", eGeometryOwner};
    CCustomPropertyManager simulation{"Simulation Properties", eSimulationOwner};
    SSimulationFrame frame;
};

/// What a legacy model's writer makes of an object.
template <class TObject>
QByteArray written(TObject& object)
{
    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    CDemDataStream stream(&buffer);
    CDemCreatorDataWriter writer(stream);
    object.write(writer);
    return buffer.data();
}

} // namespace NBrenmark
