#pragma once
// What a definition holds and a document has no place for.

namespace NBrenmark {

class CCreatorData;
class CGeometryGroup;

/// Reports all of it, before it is written. The geometry has the state of the definition.
void reportWithoutForm(const CCreatorData& creator);
/// Reports what a document that was read can't have held, as far as that shows.
void reportNotHeld(const CCreatorData& creator);

} // namespace NBrenmark
