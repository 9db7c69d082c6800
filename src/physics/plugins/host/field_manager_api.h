#pragma once
// Interfaces 1 and 2: the fields of the deck's settings, and one of them.

#include "physics/plugins/host/host_context.h"

#include <brenmark/plugin/fields.h>

namespace NBrenmark {

namespace NField {
class CFieldData;
}

namespace NApiCore {

class CFieldManagerApi_1 : public CHostApi<IFieldManagerApi_1_0, 0>
{
public:
    bool isAvailable() const override { return true; }
    IFieldApi_1_0* getField(unsigned int wanted, unsigned int wantedMajor, unsigned int wantedMinor,
                            const char* name) const override;
    IFieldApi_1_0* getField(unsigned int wanted, unsigned int wantedMajor, unsigned int wantedMinor,
                            unsigned int index) const override;
};

/// Asks for its field at each call, which may have gone since the last one.
class CFieldApi_1 : public ISubApi, public IFieldApi_1_0
{
public:
    CFieldApi_1(const CHostContext* context, qint32 field) : context(context), fieldId(field) {}

    void getVersion(unsigned int& major, unsigned int& minor) const override;
    unsigned int getIdentifier() const override { return eField; }
    bool isAvailable() const override { return field() != nullptr; }
    bool isScalar() const override;
    bool getVector(double x, double y, double z, unsigned int neighbours, int method, double& valueX, double& valueY,
                   double& valueZ) const override;
    bool getScalar(double x, double y, double z, unsigned int neighbours, int method, double& value) const override;

private:
    const NField::CFieldData* field() const;

    const CHostContext* context;
    qint32 fieldId;
};

} // namespace NApiCore
} // namespace NBrenmark
