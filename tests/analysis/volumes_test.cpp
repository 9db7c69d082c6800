// Points inside and outside of regions.
#include "analysis/region_selections.h"
#include "analysis/selection_map.h"
#include "analysis/volumes.h"
#include "model/geometry/box.h"
#include "model/geometry_groups.h"

#include <gtest/gtest.h>

namespace NBrenmark::NSelection {

TEST(Volumes, holdThePointsOfLatticesAndClosedMeshes)
{
    CSelectionMap map;
    GeometryGroups deck;
    std::string why;
    std::unique_ptr<CSelection> made = map.createSelection(QStringLiteral("Lattice Bin Group"), "bins");
    auto& lattice = dynamic_cast<CLatticeSelection&>(*made);
    lattice.bins = {2, 1, 1};
    lattice.centre = C3DPoint(1, 1, 1);
    lattice.size = C3DPoint(4, 2, 2);
    const CLatticeVolume level(lattice);
    EXPECT_EQ(level.elementAt(C3DPoint(-0.5, 1, 1)), 0);
    EXPECT_EQ(level.elementAt(C3DPoint(1, 1, 1)), 1); // a bin has its lower side
    EXPECT_EQ(level.elementAt(C3DPoint(3, 2, 2)), 1); // the last one its upper side as well
    EXPECT_EQ(level.elementAt(C3DPoint(1, 2.5, 1)), -1);
    lattice.rotation = C3DPoint(std::acos(0.0), 0, 0); // a quarter about z: what was long along x is so along y
    EXPECT_TRUE(volumeOf(lattice, deck, why)->contains(C3DPoint(1, 2.5, 1)));
    EXPECT_FALSE(volumeOf(lattice, deck, why)->contains(C3DPoint(-0.5, 1, 1)));
    lattice.bins = {0, -1, 1}; // of a damaged file
    EXPECT_FALSE(volumeOf(lattice, deck, why)->contains(C3DPoint(1, 1, 1)));

    std::unique_ptr<CSelection> other = map.createSelection(QStringLiteral("Primitive Geometry Bin"), "bin");
    auto& bin = dynamic_cast<CPrimitiveSelection&>(*other);
    bin.sectionName = QStringLiteral("Box");
    EXPECT_EQ(volumeOf(bin, deck, why), nullptr);
    EXPECT_NE(why.find("no geometry of the name"), std::string::npos) << why;
    auto* const box = new CBox(nullptr); // 1 m wide, about the origin
    box->setName(QStringLiteral("Box"));
    deck.add(box, true);
    box->rebuildMesh();
    EXPECT_TRUE(volumeOf(bin, deck, why)->contains(C3DPoint(0.49, -0.49, 0.3)));
    EXPECT_FALSE(volumeOf(bin, deck, why)->contains(C3DPoint(0.51, 0, 0)));
    box->sidesEnabled[2] = false; // which the box still calls closed
    box->rebuildMesh();
    EXPECT_EQ(volumeOf(bin, deck, why), nullptr);
    box->sidesEnabled[2] = true;
    box->rebuildMesh();
    EXPECT_NE(volumeOf(bin, deck, why), nullptr);
    box->closed = false;
    EXPECT_EQ(volumeOf(bin, deck, why), nullptr);
}

} // namespace NBrenmark::NSelection
