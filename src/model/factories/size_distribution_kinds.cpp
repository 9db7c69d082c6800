// The words of the size laws and how one is made.
#include "model/factories/size_distribution_kinds.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

double ISizeDistribution::radiusScale(double number) const
{
    // The power, not the cube root function, which would give a negative number a negative size.
    return radiusScaling ? number : std::pow(number, 0.3333333333333333);
}

template <>
const CSizeDistributionRegistry& CSizeDistributionRegistry::instance()
{
    static const CSizeDistributionRegistry registry =
        of<CFixedSizeDistribution, CRandomSizeDistribution, CNormalSizeDistribution, CLogNormalSizeDistribution,
           CUserDefinedSizeDistribution>();
    return registry;
}

void ISizeDistribution::read(IFileVisitorReader& v) { v.readSizeDistributionBase(*this); }

void ISizeDistribution::write(IFileVisitorWriter& v) const { v.writeSizeDistributionBase(*this); }

void CFixedSizeDistribution::read(IFileVisitorReader& v) { v.readFixedSizeDistribution(*this); }

void CFixedSizeDistribution::write(IFileVisitorWriter& v) const { v.writeFixedSizeDistribution(*this); }

void CRandomSizeDistribution::read(IFileVisitorReader& v) { v.readRandomSizeDistribution(*this); }

void CRandomSizeDistribution::write(IFileVisitorWriter& v) const { v.writeRandomSizeDistribution(*this); }

void CNormalSizeDistribution::read(IFileVisitorReader& v) { v.readNormalSizeDistribution(*this); }

void CNormalSizeDistribution::write(IFileVisitorWriter& v) const { v.writeNormalSizeDistribution(*this); }

void CLogNormalSizeDistribution::read(IFileVisitorReader& v) { v.readLogNormalSizeDistribution(*this); }

void CLogNormalSizeDistribution::write(IFileVisitorWriter& v) const { v.writeLogNormalSizeDistribution(*this); }

void CUserDefinedSizeDistribution::read(IFileVisitorReader& v) { v.readUserDefinedSizeDistribution(*this); }

void CUserDefinedSizeDistribution::write(IFileVisitorWriter& v) const { v.writeUserDefinedSizeDistribution(*this); }

} // namespace NBrenmark
