#pragma once
// Size laws of factories as size laws of particle types.

namespace NBrenmark {

class CCreatorData;

namespace NLegacySupport {

/// Fills the size distributions of a deck: each particle type gets the law by which factories make it, or else the
/// default one, and the types of a material equal shares of it. Where factories disagree the first one counts; the
/// log says so, and names each factory that has no size for a type that it names.
void buildSizeDistributions(CCreatorData& creator);

} // namespace NLegacySupport
} // namespace NBrenmark
