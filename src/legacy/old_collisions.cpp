// Collisions of timesteps below 20.0.0 hand themselves to the reader, base first.
#include "legacy/old_collisions.h"

#include "legacy/old_records.h"
#include "visitors/file_visitor_reader.h"

namespace NBrenmark::NLegacySupport {

quint32 nextCollisionId = 0;

void CCollision::read(IFileVisitorReader& v) { v.readLegacyCollision(*this); }

void CSurfSurfCollision::read(IFileVisitorReader& v)
{
    CCollision::read(v);
    v.readLegacySurfSurfCollisionSides(*this);
}

void CSurfGeomCollision::read(IFileVisitorReader& v)
{
    CCollision::read(v);
    v.readLegacySurfGeomCollisionSides(*this);
}

void CSurfSurfCollision::passTo(IOldRecordListener& listener, qint64 byte) const { listener.hear(*this, byte); }
void CSurfGeomCollision::passTo(IOldRecordListener& listener, qint64 byte) const { listener.hear(*this, byte); }

std::unique_ptr<CCollision> createCollision(qint32 kind)
{
    switch (kind) {
    case 0: return std::make_unique<CSurfSurfCollision>();
    case 1: return std::make_unique<CSurfGeomCollision>();
    default: return nullptr;
    }
}

} // namespace NBrenmark::NLegacySupport
