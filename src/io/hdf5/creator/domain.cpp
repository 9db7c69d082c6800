// The domain and the cylindrical conditions at its sides: one group for both.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "model/domain.h"

namespace NBrenmark {

template <class TForm, class TDomain>
static void domainForm(TForm& f, TDomain& domain)
{
    f.group("Domain/", [&] {
        f.attribute("domain min", domain.min);             // m
        f.attribute("domain max", domain.max);             // m
        f.attribute("domain xPeriodic", domain.periodicX); // what leaves comes in on the other side
        f.attribute("domain yPeriodic", domain.periodicY);
        f.attribute("domain zPeriodic", domain.periodicZ);
    });
}

void CHdf5CreatorDataReader::readDomain(CDomain& domain)
{
    if (in().since(30, 0, 17))
        domainForm(in(), domain);
    else // it was one record
        domain = in().record<HDF5DATATYPES::SDomainType>("domain");
}

void CHdf5CreatorDataWriter::writeDomain(const CDomain& domain) { domainForm(out(), domain); }

// ---------------------------------------------------------------- cylindrical conditions

template <class TForm, class TConditions>
static void cylindricalForm(TForm& f, TConditions& conditions)
{
    f.sameGroup("Domain/", [&] {
        // "domian" is how every deck spells it. Corrected, no deck would open again.
        f.attribute("domian cpbc enable", conditions.enabled);
        f.attribute("domain cpbc geometry", conditions.geometryName);   // by name
        f.attribute("domain cpbc kinematic", conditions.kinematicName); // by name
        f.attribute("domain cpbc length", conditions.length);           // m
        f.attribute("domain cpbc angle", conditions.angle);             // rad
    });
}

void CHdf5CreatorDataReader::readCylindricalPeriodicBoundaryConditions(
    CCylindricalPeriodicBoundaryConditions& conditions)
{
    if (in().since(30, 0, 17))
        cylindricalForm(in(), conditions);
    else
        conditions = CCylindricalPeriodicBoundaryConditions();
}

void CHdf5CreatorDataWriter::writeCylindricalPeriodicBoundaryConditions(
    const CCylindricalPeriodicBoundaryConditions& conditions)
{
    cylindricalForm(out(), conditions);
}

} // namespace NBrenmark
