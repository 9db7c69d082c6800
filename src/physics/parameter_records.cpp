// Each parameter record hands itself to the one slot of its class.
#include "physics/parameter_records.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

#define PARAMETER_RECORD(operation, type)                                                                              \
    void type::read(IFileVisitorReader& visitor) { visitor.read##operation(*this); }                                   \
    void type::write(IFileVisitorWriter& visitor) const { visitor.write##operation(*this); }

PARAMETER_RECORD(HertzMindlinNoSlipParamData, CHertzMindlinNoSlipContactModelParamData)
PARAMETER_RECORD(LinearSpringParamData, CLinearSpringContactModelParamData)
PARAMETER_RECORD(JkrParamData, CJkrContactModelParamData)
PARAMETER_RECORD(HeatConductionParamData, CHeatConductionModelParamData)
PARAMETER_RECORD(ArchardParamData, CArchardContactModelParamData)
PARAMETER_RECORD(ParallelBondParamData, CParallelBondContactModelParamData)
PARAMETER_RECORD(HystereticParamData, CHystereticContactModelParamData)
PARAMETER_RECORD(EdinburghCohesionParamData, CEdinburghCohesionContactModelParamData)
PARAMETER_RECORD(LeedsAdhesionParamData, CLeedsAdhesionContactModelParamData)
PARAMETER_RECORD(CohesionParamData, CCohesionContactModelParamData)
PARAMETER_RECORD(TribochargingParamData, CTribochargingContactModelParamData)
PARAMETER_RECORD(MovingPlaneParamData, CMovingPlaneContactModelParamData)
PARAMETER_RECORD(ElectrostaticsExtForceParamData, CElectrostaticsExtForceParamData)
PARAMETER_RECORD(HeatConductionExtForceParamData, CHeatConductionExtForceParamData)

#undef PARAMETER_RECORD

} // namespace NBrenmark
