#pragma once
// Who wants to know what blocks below 20.0.0 hold, record by record, before it becomes rows of the current model.

#include <QtGlobal>

namespace NBrenmark::NLegacySupport {

class CParticlePrototype;
class CSurfGeomCollision;
class CSurfSurfBond;
class CSurfSurfCollision;
class SLegacyContact;

/// Heard in the order of the file, on the thread that reads.
class IOldRecordListener
{
public:
    virtual ~IOldRecordListener() = default;

    /// The records that follow are of this list. \param name  such as "contacts/surfaceSurface"
    virtual void begin(const char* name) = 0;

    /// \param byte  where the record begins, in its file
    virtual void hear(const CParticlePrototype& record, qint64 byte) = 0;
    virtual void hear(const SLegacyContact& record, qint64 byte) = 0;
    virtual void hear(const CSurfSurfBond& record, qint64 byte) = 0;
    virtual void hear(const CSurfSurfCollision& record, qint64 byte) = 0;
    virtual void hear(const CSurfGeomCollision& record, qint64 byte) = 0;
};

} // namespace NBrenmark::NLegacySupport
