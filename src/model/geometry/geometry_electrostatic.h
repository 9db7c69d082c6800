#pragma once
// The charge of a geometry group.

#include <QtGlobal>
#include <vector>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

class CGeometryGroupElectrostatic
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    bool exempt = false;         ///< takes no part in charging
    double startCharge = 0.0;    ///< C
    std::vector<double> charges; ///< one for each triangle, C; empty until something fills it
    std::vector<quint32> words;  ///< beside the charges; never stored
};

} // namespace NBrenmark
