// Points inside and outside of regions.
#include "analysis/region_selections.h"
#include "analysis/selection_map.h"
#include "analysis/volumes.h"
#include "model/geometry/box.h"
#include "model/geometry/cad_geometry.h"
#include "model/geometry/cylinder.h"
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
    EXPECT_DOUBLE_EQ(level.elementVolume(1), 8.0); // 4 x 2 x 2 in two bins
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
    ASSERT_TRUE(bin.place(deck, why));
    EXPECT_TRUE(bin.contains(C3DPoint(0.49, -0.49, 0.3)));
    EXPECT_FALSE(bin.contains(C3DPoint(0.51, 0, 0)));
    EXPECT_DOUBLE_EQ(bin.volume(), 1.0);
    C3DTransform move;
    move.translate(C3DVector(5, 0, 0));
    box->sidesEnabled[2] = false; // an open box has its measures all the same
    box->closed = false;
    box->rebuildMesh();
    box->moveTo(move);
    ASSERT_TRUE(bin.place(deck, why));
    EXPECT_TRUE(bin.contains(C3DPoint(5.49, 0, 0)));
    EXPECT_FALSE(bin.contains(C3DPoint(0, 0, 0)));
}

TEST(Volumes, ofConesFollowTheirRadiusAndOfMeshesTheirSurface)
{
    CSelectionMap map;
    GeometryGroups deck;
    std::string why;
    auto* const cone = new CCylinder(nullptr); // 0.2 m at z = -0.5 to 0.5 m at z = 0.5, with 50 facets
    cone->setName(QStringLiteral("Cone"));
    deck.add(cone, true);
    cone->setClosedEnds(true, false);
    auto* const mesh = new CCADGeometry(nullptr); // a corner of a cube: a volume of 1 / 6
    mesh->setName(QStringLiteral("Mesh"));
    deck.add(mesh, true);
    mesh->setMesh({C3DPoint(0, 0, 0), C3DPoint(1, 0, 0), C3DPoint(0, 1, 0), C3DPoint(0, 0, 1)},
                  {{0, 2, 1}, {0, 1, 3}, {0, 3, 2}, {1, 2, 3}});
    std::unique_ptr<CSelection> made = map.createSelection(QStringLiteral("CAD Template Bin Group"), "bin");
    auto& bin = dynamic_cast<CCadTemplateSelection&>(*made);
    bin.sectionName = QStringLiteral("Cone");
    ASSERT_TRUE(bin.place(deck, why));
    EXPECT_TRUE(bin.contains(C3DPoint(0.349, 0, 0))); // 0.35 m half way
    EXPECT_FALSE(bin.contains(C3DPoint(0.351, 0, 0)));
    EXPECT_FALSE(bin.contains(C3DPoint(0, 0, 0.51)));
    EXPECT_NEAR(bin.volume(), std::acos(-1.0) * (0.04 + 0.1 + 0.25) / 3, 1e-12);
    bin.sectionName = QStringLiteral("Mesh");
    EXPECT_FALSE(bin.place(deck, why)); // whoever made it calls it open
    mesh->closed = true;
    ASSERT_TRUE(bin.place(deck, why));
    EXPECT_TRUE(bin.contains(C3DPoint(0.3, 0.3, 0.3)));
    EXPECT_FALSE(bin.contains(C3DPoint(0.4, 0.4, 0.4)));
    EXPECT_NEAR(bin.volume(), 1.0 / 6, 1e-15);
    const auto* const element = dynamic_cast<const IVolume*>(map.createSubSelection(bin, "bin:1", 0));
    EXPECT_TRUE(element->contains(C3DPoint(0.3, 0.3, 0.3)));
    mesh->triangleNodes.pop_back(); // and now it is
    EXPECT_FALSE(bin.place(deck, why));
    EXPECT_NE(why.find("isn't closed"), std::string::npos);
    EXPECT_FALSE(element->contains(C3DPoint(0.3, 0.3, 0.3)));
}

} // namespace NBrenmark::NSelection
