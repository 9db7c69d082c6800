#pragma once
// The default contact model of both chains.

#include "physics/contact_model.h"

namespace NBrenmark {

class CHertzMindlinNoSlipContactModelParamData : public CRollingFrictionParamData
{
public:
    explicit CHertzMindlinNoSlipContactModelParamData(quint32 modelType)
        : CRollingFrictionParamData(modelType), modelType(modelType)
    {}
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    quint32 modelType;
};

class CHertzMindlinNoSlipContactModel : public IContactModel
{
public:
    static const QString registeredName; ///< "Hertz-Mindlin (no slip)"

    explicit CHertzMindlinNoSlipContactModel(quint32 modelType);
    QString modelName() const override { return registeredName; }
    void read(IFileVisitorReader& visitor) override;
    void write(IFileVisitorWriter& visitor) const override;

    CHertzMindlinNoSlipContactModelParamData parameters;
};

} // namespace NBrenmark
