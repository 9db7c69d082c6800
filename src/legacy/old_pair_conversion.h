#pragma once
// How contacts, bonds and collisions that name particles and triangles by their ids become rows that name them by their
// places. Runs once, after the read of the particles and of the geometry. What finds no place is left out and reported.

namespace NBrenmark {

class CBonds;
class CCollisions;
class CContacts;
class CParticleTypes;
class GeometryGroups;

namespace NLegacySupport {

class CActiveCollisions;
class CBondList;
class SLegacyContactLists;

void linkLegacyRows(CContacts& contacts, const SLegacyContactLists& old, const CParticleTypes& types,
                    const GeometryGroups& groups);

void linkLegacyRows(CBonds& bonds, const CBondList& old, const CParticleTypes& types);

/// Finished collisions become records of their own, those that go on the records of the contacts that they belong to.
void linkLegacyRows(CCollisions& collisions, CContacts& contacts, const CActiveCollisions& old,
                    const CParticleTypes& types, const GeometryGroups& groups);

} // namespace NLegacySupport
} // namespace NBrenmark
