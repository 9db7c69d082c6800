#pragma once
// The default contact model with a rolling friction that depends on the relative velocity.

#include "physics/built_in_contact_model.h"

namespace NBrenmark {

class CHertzMindlinRVDCTContactModel : public CContactModelWithout
{
public:
    using CContactModelWithout::CContactModelWithout;
};

} // namespace NBrenmark
