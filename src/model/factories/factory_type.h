#pragma once
// Which particle type a factory creates next.

#include "model/factories/factory_parameter.h"

#include <vector>

namespace NBrenmark {

class CParticleTypes;
class IFactoryPosition;

class IFactoryType : public IFactoryParameter
{
public:
    using Family = IFactoryType;

    virtual std::unique_ptr<IFactoryType> clone() const = 0;
    /// Keeps the list and takes its first names as the own ones; with fewer types than names the last
    /// type stands for the rest, and without types the names stay.
    virtual void setParticleTypes(const CParticleTypes* types) = 0;
    /// The next particle is of this type, once, and the order goes on after it as if it weren't there.
    virtual void setNextName(const QString& name) = 0;
    virtual void setPositionParam(IFactoryPosition* position) = 0;
    /// Keeps the list, and nothing else.
    virtual void attachParticleTypes(const CParticleTypes* types) = 0;
    /// The index of the next particle's type; of types of one name the last counts.
    /// \return false if there is no type of that name; the order doesn't advance then
    virtual bool nextTypeIndex(quint32& outIndex, const CParticleTypes& types) = 0;
    /// The name of the next particle's type; empty without names.
    virtual QString nextTypeName() = 0;
    virtual std::vector<QString> typeNames() const = 0;
    /// Takes the last step of the order back.
    virtual void stepBack() = 0;
    /// The greatest reach of the types at a scale of 1, m; a type that isn't there counts as 0.
    virtual double maxRadius(const CParticleTypes& types) const = 0;
    /// \return false: nothing else depends on the name
    virtual bool renameType(const QString& oldName, const QString& newName) = 0;
    virtual void setTypeNames(const std::vector<QString>& list) = 0;
};

/// Some names, taken in turn.
class NNaryFactoryType : public IFactoryType
{
public:
    void setParticleTypes(const CParticleTypes* types) override;
    void setNextName(const QString& name) override;
    void setPositionParam(IFactoryPosition* position) override { positionParam = position; }
    void attachParticleTypes(const CParticleTypes* types) override { particleTypes = types; }
    bool nextTypeIndex(quint32& outIndex, const CParticleTypes& types) override;
    QString nextTypeName() override;
    std::vector<QString> typeNames() const override { return names; }
    void stepBack() override;
    double maxRadius(const CParticleTypes& types) const override;
    bool renameType(const QString& oldName, const QString& newName) override;
    void setTypeNames(const std::vector<QString>& list) override { names = list; }
    /// Takes CParticleTypesParamData beside the kind's own record.
    bool setParamData(const IParamData& data) override;

    const CParticleTypes* particleTypes = nullptr; ///< not owned
    IFactoryPosition* positionParam = nullptr;     ///< of the same factory, not owned
    std::vector<QString> names;
    qint32 next = 0; ///< index of the name that comes next
    bool hasOverride = false;
    QString overrideName;

protected:
    explicit NNaryFactoryType(std::size_t nameCount) : names(nameCount) {}
    virtual bool setNames(const IParamData& data) = 0;

private:
    /// next as an index that is there, whatever a file says; only with names.
    std::size_t nextIndex() const;
    void advance(qint32 steps);
};

class CFixedFactoryType : public CFactoryParameterKind<CFixedFactoryType, NNaryFactoryType>
{
public:
    static constexpr const char* word = "fixed";

    CFixedFactoryType() : CFactoryParameterKind(1) {}
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
    std::unique_ptr<IParamData> paramData() const override;
    std::type_index paramDataType() const override { return typeid(CFixedTypeParamData); }

protected:
    bool setNames(const IParamData& data) override;
};

class CBinaryFactoryType : public CFactoryParameterKind<CBinaryFactoryType, NNaryFactoryType>
{
public:
    static constexpr const char* word = "binary";

    CBinaryFactoryType() : CFactoryParameterKind(2) {}
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;
    std::unique_ptr<IParamData> paramData() const override;
    std::type_index paramDataType() const override { return typeid(CBinaryTypeParamData); }

protected:
    bool setNames(const IParamData& data) override;
};

using CFactoryTypeRegistry = CKindRegistry<IFactoryType>;
template <>
const CFactoryTypeRegistry& CFactoryTypeRegistry::instance();

} // namespace NBrenmark
