#pragma once
// The link from a geometry group to the material block that fills it.

#include <QString>

namespace NBrenmark {

class CBoundingBox;
class IFileVisitorReader;
class IFileVisitorWriter;

class CBlockLink
{
public:
    explicit CBlockLink(const CBoundingBox* groupBounds) : groupBounds(groupBounds) {}

    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    QString blockName;
    const CBoundingBox* groupBounds; ///< where the block is placed; not owned
};

} // namespace NBrenmark
