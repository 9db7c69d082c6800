// The simulation box: attributes of "geometry".
#include "model/domain.h"
#include "xml/serialisers.h"

namespace NBrenmark {

template <class TForm, class TDomain>
static void domainForm(TForm& f, TDomain& domain)
{
    f.xyz("domain_min_", domain.min); // m
    f.xyz("domain_max_", domain.max); // m
    f.flag("periodic_x", domain.periodicX);
    f.flag("periodic_y", domain.periodicY);
    f.flag("periodic_z", domain.periodicZ);
}

void CXmlReader::readDomain(CDomain& domain) { domainForm(in(), domain); }
void CXmlWriter::writeDomain(const CDomain& domain) { domainForm(out(), domain); }

namespace {

class CDomainPart : public CXmlPart<CDomain>
{
public:
    using CXmlPart::CXmlPart;

    bool startDomElement(const QString&, const CXmlAttributes& attributes, const CXmlIoOptions& options) override
    {
        if (!attributes.is("geometry"))
            return false;
        fromDomElement(attributes, options);
        return true;
    }
};

} // namespace

std::unique_ptr<CXmlSerialiser> domainPart(CDomain& domain) { return std::make_unique<CDomainPart>(domain); }

} // namespace NBrenmark
