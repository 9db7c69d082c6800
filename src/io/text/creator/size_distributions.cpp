#include "model/size_distributions.h"
#include "io/text/text_writer.h"

namespace NBrenmark {

void CTextWriter::writeParticleSizeDistributionMap(const CParticleSizeDistributionMap& map)
{
    for (const auto& [name, share] : map.entries) {
        out.group(NText::segment(name), [this, &share = share] {
            out.value("percentage", share.percentage);
            if (share.distribution)
                share.distribution->write(*this);
        });
    }
}

} // namespace NBrenmark
