#pragma once
// What the parameter objects of a particle factory have in common. Each family (position, size,
// velocity ...) is an interface of its own with several kinds, chosen by a word and made by the
// family's registry.

#include "model/factories/kind_registry.h"
#include "model/factories/param_data.h"

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

class IFactoryParameter : public IParameterSupport
{
public:
    /// The word that files store.
    virtual QString kindWord() const = 0;
    virtual void read(IFileVisitorReader& visitor) = 0;
    virtual void write(IFileVisitorWriter& visitor) const = 0;
};

/// The kind TKind, which has a static member word, of the family that TBase belongs to.
template <class TKind, class TBase>
class CFactoryParameterKind : public TBase
{
public:
    using TBase::TBase;

    QString kindWord() const override { return TKind::word; }
    /// Objects pointed at, but not owned, are the copy's as well.
    std::unique_ptr<typename TBase::Family> clone() const override
    {
        return std::make_unique<TKind>(static_cast<const TKind&>(*this));
    }
};

} // namespace NBrenmark
