// Documents of definitions and timesteps: what is written, what is read of old ones, and what is lost on the way.
#include "xml/document.h"

#include "core/cause.h"
#include "support/log_capture.h"
#include "support/paths.h"
#include "support/samples.h"
#include "support/text_lines.h"
#include "support/xml_losses.h"

#include <QBuffer>

#include <regex>

namespace NBrenmark {

static QByteArray written(SModel& model, EXmlDocument kind, CXmlIoOptions options = CXmlIoOptions())
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (kind == eXmlDefinition)
        writeDefinition(buffer, model.creator, options);
    else
        writeTimestep(buffer, model.timestep, options);
    return buffer.data();
}

static void read(SModel& model, QByteArray document, EXmlDocument kind = eXmlDefinition)
{
    QBuffer buffer(&document);
    buffer.open(QIODevice::ReadOnly);
    CXmlIoOptions options;
    if (kind == eXmlDefinition)
        readDefinition(buffer, model.creator, options);
    else
        readTimestep(buffer, model.timestep, options);
}

/// A definition of a version with some elements in it.
static QByteArray document(const QByteArray& content, const QByteArray& version = "30.0.1")
{
    return "<simulation name=\"s\" version=\"" + version + "\">" + content + "</simulation>";
}

template <class TRoot>
static Lines linesOf(TRoot& root)
{
    CLineMap map;
    CTextWriter writer(map, "", true);
    root.write(writer);
    return map.lines;
}

// ---------------------------------------------------------------- writing

TEST(XmlDefinition, isWrittenInTheOrderOfItsTables)
{
    SModel model;
    CCreatorData& creator = model.creator;
    creator.title = "Pile & \"bed\"" + QString(QChar(1));
    creator.description = "two\nlines";
    creator.gravity = C3DPoint(0, 0, -9.81);
    creator.damping = 1e-24;
    creator.domain.max = C3DPoint(1, 2, 3);
    creator.domain.periodicX = true;
    CParticleType& ball = creator.particleTypes.append();
    ball.setName("Ball");
    ball.materialName = "steel";
    ball.rawMass = 0.1;
    CSphere sphere;
    sphere.name = "one";
    sphere.setRadii(0.3, 1.0 / 3.0);
    ball.spheres.push_back(sphere);
    creator.materials.set("steel", new CMaterial("steel", 0.3, 8e10, 7850, 4.5, 0));
    creator.interactions.set("steel", "glass", new CInteraction());
    creator.physicsModels.clear();
    creator.physicsModels.addExternalForce(creator.physicsModels.makeExternalForce("Electrostatics", 0, false), -1);
    CXmlIoOptions options;
    options.writeGeometryGroups = false;
    for (CCustomPropertyManager* manager : {&model.particle, &model.contact, &model.geometry, &model.simulation})
        manager->clear(false);

    const CLogCapture log;
    EXPECT_EQ(written(model, eXmlDefinition, options).toStdString(), R"(<?xml version="1.0" encoding="UTF-8"?>
<simulation name="Pile &amp; &quot;bed&quot;" description="two&#10;lines" version="30.0.1">
 <globals>
  <gravity x="0" y="0" z="-9.81"/>
  <damping factor="1e-24"/>
 </globals>
 <particles>
  <templates>
   <template material="steel" volume="0" name="Ball" mass="0.1" I_x="0" I_y="0" I_z="0" calc_props="yes">
    <sphere id="0" x="0" y="0" z="0" contact_radius="0.3" physical_radius="0.3333333333333333" name="one"/>
   </template>
  </templates>
 </particles>
 <geometry domain_min_x="0" domain_min_y="0" domain_min_z="0" domain_max_x="1" domain_max_y="2" domain_max_z="3" )"
                                                                     R"(periodic_x="1" periodic_y="0" periodic_z="0"/>
 <materials>
  <material name="steel" poissons_ratio="0.3" shear_modulus="8e+10" density="7850" work_function="4.5" type="0"/>
 </materials>
 <interactions>
  <interaction material1="glass" material2="steel" coeff_restitution="0.5" coeff_static_friction="0.5" )"
                                                                     R"(coeff_rolling_friction="0.01"/>
 </interactions>
 <size_distrbution/>
 <physics_models>
  <contact_models/>
  <external_forces>
   <external_force id="Electrostatics" source="0" screening_distance_rmin="5"/>
  </external_forces>
 </physics_models>
</simulation>
)");
    EXPECT_NE(log.text().find("1 character left out: XML can't hold them; the first is in an attribute \"name\""),
              std::string::npos);
    creator.damping = 1e-26; // as good as none
    EXPECT_FALSE(written(model, eXmlDefinition).contains("damping"));
}

TEST(XmlTimestep, isWrittenInTheOrderOfItsTables)
{
    SModel model;
    for (CCustomPropertyManager* manager : {&model.particle, &model.contact, &model.geometry, &model.simulation})
        manager->clear(false);
    CTimestepData& timestep = model.timestep;
    timestep.runNumber = 2;
    timestep.time = 0.5;
    timestep.date = "01/02/26";
    timestep.systemEnergy.total = 1;
    timestep.systemEnergy.cumulative.lostThroughCapping = 0.25;
    CParticleType& ball = timestep.particleTypes.append();
    ball.setName("Ball");
    ball.spheres.resize(2);
    SParticleState state;
    state.id = 3;
    state.scale = 1.5;
    state.orientation = CQuaternion(0, 0, 0, 1); // half a turn about z
    ball.addParticle(state);
    state.id = 7;
    ball.addParticle(state);
    auto* const wall = new CCADGeometry(nullptr);
    model.creator.geometryGroups.add(wall, false);
    wall->setMesh({C3DPoint(0, 0, 0), C3DPoint(3, 0, 0), C3DPoint(0, 3, 0)}, {{0, 1, 2}});
    wall->triangleIds = {42};
    CContactsBase& pairs = timestep.contacts.surfaceSurface;
    pairs.resizeRows(2);
    pairs.rows = {{0, 1, 0, 2}, {0, 0, 0, 3}}; // sphere 1 of the first on sphere 0 of the second; a released row
    pairs.normalOverlap = {0.125, releasedOverlap};
    pairs.normalForce[0] = C3DVector(1, 2, 3);
    pairs.contactVector2[0] = C3DVector(4, 5, 6);
    CContactsBase& walls = timestep.contacts.surfaceGeometry;
    walls.resizeRows(1);
    walls.rows = {{0, 3, 0, 0}};
    walls.tangentialOverlap[0] = C3DVector(7, 8, 9);
    CBondsBase& bonds = timestep.bonds.surfaceSurface;
    bonds.resizeRows(1);
    bonds.rows = {{0, 0, 0, 3}};
    bonds.tangentialTorque[0] = C3DVector(1, 2, 3);
    bonds.state = {1};
    timestep.collisions.surfaceSurface.resizeRecords(2);
    timestep.collisions.surfaceSurface.ids = {5, 0};
    CXmlIoOptions options;
    options.writeContacts = options.writeBonds = options.writeCollisions = true;
    const std::string turn = R"(orient_xx="-1" orient_xy="0" orient_xz="0" orient_yx="0" orient_yy="-1" orient_yz="0" )"
                             R"(orient_zx="0" orient_zy="0" orient_zz="1"/>)";
    const auto zero = [](const std::string& name) { return name + "x=\"0\" " + name + "y=\"0\" " + name + "z=\"0\""; };
    const std::string place = zero("pos_") + ' ' + zero("vel_") + ' ' + zero("angvel_") + ' ';
    EXPECT_EQ(written(model, eXmlTimestep, options).toStdString(),
              R"(<?xml version="1.0" encoding="UTF-8"?>
<simulation runs="2" time="0.5" date="01/02/26">
 <globals>
  <energy total="1" kinetic="0" potential="0">
   <cumulative_energy kinetic="0" potential="0" new_particles="0" destroyed_particles="0" external="0" )"
              R"(lost_through_contacts="0" lost_through_capping="0.25"/>
  </energy>
 </globals>
 <simulation_properties/>
 <particles>
  <list>
   <particle id="3" type="Ball" scaling_factor="1.5" )" +
                  place + turn + R"(
   <particle id="7" type="Ball" scaling_factor="1.5" )" +
                  place + turn + R"(
  </list>
 </particles>
 <contacts>
  <surface_surface_contact>
   <contact particle1="3" surface1="1" particle2="7" surface2="0" normal_overlap="0.125" )" +
                  zero("tang_overlap_") + ' ' + zero("tang_force_") +
                  R"( normal_force_x="1" normal_force_y="2" normal_force_z="3" )" + zero("vector1_") +
                  R"( vector2_x="4" vector2_y="5" vector2_z="6" )" + zero("position_") + R"(/>
  </surface_surface_contact>
  <surface_geometry_contact>
   <contact particle="7" surface="1" geometry="42" normal_overlap="0" tang_overlap_x="7" tang_overlap_y="8" )" +
                  R"(tang_overlap_z="9" )" + zero("tang_force_") + ' ' + zero("normal_force_") + ' ' +
                  zero("vector1_") + ' ' + zero("vector2_") + ' ' + zero("position_") + R"(/>
  </surface_geometry_contact>
 </contacts>
 <bonds>
  <surface_surface_bond>
   <bond particle1="3" surface1="0" particle2="7" surface2="1" )" +
                  zero("normal_force_") + ' ' + zero("tang_force_") + ' ' + zero("normal_moment_") +
                  R"( tang_moment_x="1" tang_moment_y="2" tang_moment_z="3" bonding_state="1" )" +
                  R"(break_time="0"/>
  </surface_surface_bond>
  <surface_geometry_bond/>
 </bonds>
 <collisions>
  <surface_surface_collisions>
   <collision/>
  </surface_surface_collisions>
  <surface_geometry_collisions/>
 </collisions>
</simulation>
)");
}

TEST(XmlTimestep, takesAnotherTimeOnce)
{
    SModel model;
    model.timestep.time = 1.5;
    CXmlIoOptions options;
    options.overrideTime = true;
    options.timeOverride = 2.25;
    for (const char* const time : {"time=\"2.25\"", "time=\"1.5\""}) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        writeTimestep(buffer, model.timestep, options);
        EXPECT_TRUE(buffer.data().contains(time)) << buffer.data().toStdString();
    }
}

// ---------------------------------------------------------------- there and back

static void expectDefinitionLosses(const Lines& before, const Lines& after, const std::string& log)
{
    std::set<std::string> met;
    for (const std::string& path : changed(before, after)) {
        if (path.compare(0, 7, "stored/") == 0)
            continue;
        const auto* const loss =
            std::find_if(std::begin(definitionLosses), std::end(definitionLosses),
                         [&](const SXmlLoss& row) { return std::regex_match(path, std::regex(row.lines)); });
        const auto value = [&](const Lines& lines) { return lines.count(path) > 0 ? lines.at(path) : "nothing"; };
        EXPECT_NE(loss, std::end(definitionLosses)) << path << ": " << value(before) << " became " << value(after);
        if (loss != std::end(definitionLosses))
            met.insert(loss->lines);
    }
    for (const SXmlLoss& loss : definitionLosses) {
        EXPECT_EQ(met.count(loss.lines), 1u) << loss.lines << " isn't lost";
        EXPECT_NE(log.find(loss.reported), std::string::npos) << loss.reported << " isn't in\n" << log;
    }
}

TEST(XmlDefinition, losesOnlyWhatHasNoFormAndSaysSo)
{
    SModel before, after;
    fill(before.creator);
    for (const std::unique_ptr<CParticleType>& type : before.creator.particleTypes.types)
        type->resizeSlots(0); // a definition has no particles
    const CLogCapture log;
    const Lines lines = linesOf(before.creator);
    read(after, written(before, eXmlDefinition));
    expectDefinitionLosses(lines, linesOf(after.creator), log.text());
    EXPECT_FALSE(after.creator.modified);
}

// ---------------------------------------------------------------- reading

struct SReadCase
{
    const char* content;
    const char* version;
    const char* expected; ///< lines of the definition's text
};

static const SReadCase readCases[] = {
    {"<material name='a'/>", "2.4.0", "materials/a/type 1; materials/a/workFunction 0; materials/a/density 0"},
    {"<material name='a' type=''/>", "30.0.1", "materials/a/type 1"},
    {"<material name='a' type='0' density='x'/>", "30.0.1", "materials/a/type 0; materials/a/density 0"},
    {"<size_distrbution><particle_size_distribution name='B' type='user defined' percentage='40'>"
     "<size_distribution_params radius_scaling='0'><band scale='0.5' value='25'/></size_distribution_params>"
     "</particle_size_distribution></size_distrbution>",
     "30.0.1",
     "sizeDistributions/B/percentage 40; sizeDistributions/B/radiusScaling false; "
     "sizeDistributions/B/bands f64[1,2] (0.5, 25)"},
    // Groups.
    {"<group name='G' shape='default' closure='closed' type='Physical'/>", "2.4.3",
     "geometryGroups/G/closed true; geometryGroups/G/geometryType 1; geometryGroups/G/shape \"cad_geometry\""},
    {"<group name='G' shape='box' closure='closed' type='Dynamic Domain'/>", "2.4.4",
     "geometryGroups/G/closed false; geometryGroups/G/geometryType 3"},
    {"<group name='G' shape='box' closure='volume' type='other'/>", "2.4.4",
     "geometryGroups/G/closed true; geometryGroups/G/geometryType 0"},
    {"<group name='G' shape='box'/>", "30.0.1", "geometryGroups/G/geometryType 2; geometryGroups/G/gain 0"},
    {"<group name='G' shape='cad_geometry'><nodes><node id='7' x='1.23457e+06' y='0' z='0'/><node id='x' y='1'/>"
     "<node id='8' y='1'/><node id='9' z='1'/></nodes><triangle id='3' node1='9' node2='7' node3='8'/>"
     "<triangle id='4' node1='1' node2='7' node3='8'/></group>",
     "30.0.1",
     "geometryGroups/G/vertices/0 (1234570, 0, 0); geometryGroups/G/vertices/2 (0, 0, 1); geometryGroups/G/vertexIds "
     "u32[3] 7 8 9; "
     "geometryGroups/G/triangleIds u32[1] 3; geometryGroups/G/triangleNodes u32[1,3] (2, 0, 1)"},
    {"<group name='A' shape='box' id='1'/><group name='A' shape='box' id='0'><dynamics><rotation name='no'/></dynamics>"
     "</group><group name='' shape='box'/>",
     "30.0.1", "geometryGroups/count 1; geometryGroups/A/index 1"},
    // A unit box has 8 corners and 12 triangles, a volume of 1 and a surface of 6.
    {"<group name='G' shape='box' closure='volume'><box width='1' height='1' length='1' side_1='closed' "
     "side_2='closed' "
     "side_3='closed' side_4='closed' side_5='closed' side_6='closed'/></group>",
     "30.0.1", "geometryGroups/G/enclosedMagnitude 1; geometryGroups/G/surfaceMagnitude 6"},
    {"<group name='G' shape='cylinder'><cylinder radius='2' radius1='1' detail='3' end1='closed' end2='open' "
     "end_z='1'/>"
     "</group>",
     "30.0.1",
     "geometryGroups/G/cylinder/radiusStart 2; geometryGroups/G/cylinder/radiusEnd 2; "
     "geometryGroups/G/cylinder/closedStart true; geometryGroups/G/cylinder/closedEnd false"},
    {"<group name='G' shape='polygon'><polygon edges='0' radius='1' normal_z='1'/></group>", "30.0.1",
     "geometryGroups/G/polygon/edges 3"},
    {"<group name='G' shape='polygon'><polygon edges='4' centre_x='1' end_x='4' end_y='4' mid_x='1' "
     "mid_y='2'/></group>",
     "2.4.0",
     "geometryGroups/G/polygon/lengthSide1 5; geometryGroups/G/polygon/lengthSide2 2; "
     "geometryGroups/G/polygon/centre (2.5, 3, 0)"},
    // Motions.
    {"<group name='G' shape='box'><dynamics><translation name='t' start_vel_y='3' accn_y='-2' start_x='1'/>"
     "<linear_translation name='translation_for_servo_control'/></dynamics></group>",
     "2.4.0",
     "geometryGroups/G/motions/t/kind \"Linear Translation\"; geometryGroups/G/motions/t/initialVelocity 3; "
     "geometryGroups/G/motions/t/acceleration -2; geometryGroups/G/motions/t/endPoint (1, 3, 0)"},
    {"<group name='G' shape='box' gain='1e-24'/>", "30.0.1",
     "geometryGroups/G/motions/translation_for_servo_control/index 0"},
    // Factories.
    {"<group name='G' shape='box'><factories><dynamic name='F' generation_type='1' number='unlimited' rate='7'>"
     "<factory_template type='binary' nameA='A' nameB='B'/><size type='fixed' size='2' scaling='volume'/></dynamic>"
     "</factories></group>",
     "27.0.0",
     "geometryGroups/G/factories/F/unlimited true; geometryGroups/G/factories/F/creationRate 7; "
     "geometryGroups/G/factories/F/sizes/A/value 2; geometryGroups/G/factories/F/sizes/B/radiusScaling false"},
    {"<group name='G' shape='box'><factories><static name='F' generation_type='1' number='fill_shape' total_mass='3'>"
     "<sizes><size type='user defined' particle_type='A' scaling='volume' band_count='2' "
     "bands='0.5,30:2,100:'/></sizes>"
     "</static></factories></group>",
     "30.0.0",
     "geometryGroups/G/factories/F/fillShape true; geometryGroups/G/factories/F/massCreation true; "
     "geometryGroups/G/factories/F/sizes/A/bands f64[2,2] (0.5, 30) (2, 100)"},
    // A law in an element of its own belongs to the size before it, in a factory as in a mix.
    {"<size_distrbution><particle_size_distribution name='B' type='fixed'><size_distribution_params ratio='3'/>"
     "</particle_size_distribution></size_distrbution><group name='G' shape='box'><factories><dynamic name='F'>"
     "<factory_template type='fixed' name='A'/><size type='user defined'/><size_distribution_params radius_scaling='1'>"
     "<band scale='0.5' value='30'/><band scale='2' "
     "value='100'/></size_distribution_params></dynamic></factories></group>",
     "27.0.0",
     "sizeDistributions/B/value 3; geometryGroups/G/factories/F/sizes/A/radiusScaling true; "
     "geometryGroups/G/factories/F/sizes/A/bands f64[2,2] (0.5, 30) (2, 100)"},
    // Physics.
    {"<physics_models><contact_models><contact_model id='hertz-mindlin (no slip)' type='1'/>"
     "<contact_model id='Hertz-Mindlin with heat conduction'><heat_conduction particle_type='a'/></contact_model>"
     "<contact_model id='Hysteretic Spring' type='0' source='0'><interaction type1='b' type2='a' damping='1'/>"
     "</contact_model><contact_model id='Mine' source='1'/></contact_models></physics_models>",
     "30.0.1",
     "physicsModels/sphereGeometryModels/Hertz-Mindlin%20(no%20slip)/source 0; "
     "physicsModels/sphereSphereModels/Hysteretic%20Spring/index 0; "
     "physicsModels/sphereSphereModels/Hysteretic%20Spring/interactions/a/b/damping 1; "
     "physicsModels/sphereSphereModels/Mine/source 1"},
};

TEST(XmlDefinition, isReadWithTheWordsOfAllVersions)
{
    for (const SReadCase& row : readCases) {
        SModel model;
        read(model, document(row.content, row.version));
        expectText(model.creator, row.expected, row.content);
    }
}

TEST(XmlDefinition, saysWhereWhatIsLeftOut)
{
    SModel model;
    const CLogCapture log;
    QByteArray content = "\n <material name='a' density='heavy' colour='1'/>\n <colour r='1'/>";
    for (int i = 0; i < 100; ++i)
        content += "<colour/>";
    read(model, document(content));
    EXPECT_NE(log.text().find("Line 2, column 48: \"heavy\" isn't a number: \"density\" of \"material\" is read as 0."),
              std::string::npos)
        << log.text();
    EXPECT_NE(
        log.text().find("Line 2, column 48: The attribute \"colour\" of \"material\" isn't known and is left out."),
        std::string::npos)
        << log.text();
    EXPECT_NE(log.text().find("Line 3, column 16: The element \"colour\" isn't known"), std::string::npos);
    EXPECT_NE(log.text().find("81 unknown elements more of the kind."), std::string::npos) << log.text();
}

// ---------------------------------------------------------------- what isn't read

struct SBadCase
{
    QByteArray document;
    const char* error;
};

TEST(XmlDocuments, thatAreNoneEndInAClearError)
{
    QByteArray laughs = "<!DOCTYPE s [<!ENTITY a0 'ha'>";
    for (int i = 1; i < 20; ++i)
        laughs +=
            QString("<!ENTITY a%1 '&a%2;&a%2;&a%2;&a%2;&a%2;&a%2;&a%2;&a%2;&a%2;&a%2;'>").arg(i).arg(i - 1).toUtf8();
    QByteArray attributes = "<simulation version='30.0.1'";
    for (int i = 0; i < 200000; ++i)
        attributes += " a" + QByteArray::number(i) + "=''";
    const SBadCase cases[] = {
        {"", "Line 1, column 0: Premature end of document."},
        {"<simulation version='30.0.1'>\n<a></b></simulation>", "Line 2, column 7: Opening and ending tag mismatch."},
        {"<simulation version='30.0.1'><a>", "Premature end of document."},
        {document("<damping factor='&unknown;'/>"), "Entity 'unknown' not declared."},
        {"<deck version='30.0.1'/>", "The root is \"deck\""},
        {"<simulation version='30'/>", "\"30\" isn't a version."},
        {"<simulation runs='1'/>", "is that of a timestep, or has no version"},
        {document("", "2.3.255"), "XML versions older than 2.4.0 are no longer supported."},
        {laughs + "]>" + document("<damping factor='&a19;'/>"), "The document declares entities"},
        {"<!DOCTYPE s [<!ENTITY x SYSTEM 'file:///etc/passwd'>]>" + document(""), "The document declares entities"},
        {document(QByteArray("<a>").repeated(100)), "nested deeper than 64"},
        {"<simulation version='30.0.1' name='" + QByteArray(20 << 20, 'x'), "A tag or text is too long"},
        {QByteArray(20 << 20, '<'), "Line 1, column 2: "},
        {attributes, "has too many attributes"},
        {document("<custom_properties_Particle_Properties>" + QByteArray("<custom_property_a name='a'/>").repeated(1) +
                  "</x>"),
         "Opening and ending tag mismatch."},
    };
    for (const SBadCase& row : cases) {
        SModel model;
        try {
            read(model, row.document);
            ADD_FAILURE() << "no error for " << row.document.left(100).toStdString();
        }
        catch (const caused_error& error) {
            EXPECT_NE(std::string(error.what()).find(row.error), std::string::npos)
                << error.what() << " for " << row.document.left(100).toStdString();
        }
    }
}

/// Every prefix of a document ends in an error, and nothing worse.
TEST(XmlDocuments, thatAreCutShortAreRefused)
{
    SModel model;
    fill(model.creator);
    const QByteArray whole = written(model, eXmlDefinition).trimmed();
    for (int length = 0; length < whole.size(); length += 97) {
        SModel cut;
        EXPECT_THROW(read(cut, whole.left(length)), caused_error) << length;
    }
}

} // namespace NBrenmark
