#pragma once
// The parameters of a contact model or an external force from JSON, under the names of their records' fields.

#include "brenmark/law/json_members.h"

#include "physics/contact_model.h"
#include "physics/external_force.h"

namespace NBrenmark {

/// Sets what the object holds; anything else keeps the value that it has.
void setParameters(IContactModel& model, const CJsonMembers& json);
void setParameters(IExternalForce& force, const CJsonMembers& json);

} // namespace NBrenmark
