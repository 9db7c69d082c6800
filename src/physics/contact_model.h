#pragma once
// What every contact model is to a deck: a name, a place in a chain, and a parameter record.

#include <QString>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

enum EContactModelType : quint32
{
    eSphereSphereModel = 0,
    eSphereGeometryModel = 1
};

/// Where a model comes from; any other value asks for a built-in one first, then a plug-in.
enum EModelSource : quint32
{
    eBuiltInModel = 0,
    ePluginModel = 1
};

/// The option of many parameter records whether the second element of a contact gets a rolling
/// friction torque. It starts as true between spheres and as false at geometry.
class CRollingFrictionParamData
{
public:
    explicit CRollingFrictionParamData(quint32 modelType) : enableRollingFriction(modelType == eSphereSphereModel) {}
    virtual ~CRollingFrictionParamData() = default;
    virtual bool hasRollingFrictionOption() const { return true; }

    bool enableRollingFriction;
};

class IContactModel
{
public:
    IContactModel(quint32 modelType, quint32 source) : modelType(modelType), source(source) {}
    virtual ~IContactModel() = default;
    /// The registered name.
    virtual QString modelName() const = 0;
    virtual void read(IFileVisitorReader& visitor) = 0;
    virtual void write(IFileVisitorWriter& visitor) const = 0;

    quint32 modelType; ///< EContactModelType
    quint32 source;    ///< EModelSource
};

} // namespace NBrenmark
