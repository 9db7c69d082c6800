#pragma once
// The stored form of custom properties, as far as other forms need it.

namespace NBrenmark {

class CInForm;
class COutForm;

/// What is stored where no custom property values are kept.
void writeNoCustomProperties(COutForm& f);

} // namespace NBrenmark
