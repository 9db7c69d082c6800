#include "physics/hertz_mindlin_no_slip.h"

#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

namespace NBrenmark {

const QString CHertzMindlinNoSlipContactModel::registeredName = QStringLiteral("Hertz-Mindlin (no slip)");

CHertzMindlinNoSlipContactModel::CHertzMindlinNoSlipContactModel(quint32 modelType)
    : IContactModel(modelType, eBuiltInModel), parameters(modelType)
{}

void CHertzMindlinNoSlipContactModelParamData::read(IFileVisitorReader& v) { v.readHertzMindlinNoSlipParamData(*this); }

void CHertzMindlinNoSlipContactModelParamData::write(IFileVisitorWriter& v) const
{
    v.writeHertzMindlinNoSlipParamData(*this);
}

void CHertzMindlinNoSlipContactModel::read(IFileVisitorReader& v) { parameters.read(v); }

void CHertzMindlinNoSlipContactModel::write(IFileVisitorWriter& v) const { parameters.write(v); }

} // namespace NBrenmark
