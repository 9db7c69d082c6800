#include "support/legacy_deck.h"

namespace NBrenmark {

SDeckModel defaultDeckModel() { return {"Hertz-Mindlin (no slip)", 0}; }

SDeckCreator::SDeckCreator() : particleParticle{defaultDeckModel()}, particleGeometry{defaultDeckModel()} {}

// ---------------------------------------------------------------- parts of blocks

CBytes stampBytes(quint32 version, const SDeckStamp& stamp)
{
    CBytes b;
    b.u32(version).i32(stamp.reservedWord);
    if (stamp.reservedWord != 0 && !since(version, 21, 0, 3))
        b.i32(stamp.branchWord);
    if (since(version, 20, 0, 18))
        b.i32(stamp.buildRevision).text(stamp.buildBranch);
    return b;
}

CBytes materialBytes(quint32 version, const SDeckMaterial& m)
{
    CBytes b;
    b.text(m.name).f64(m.poissonsRatio).f64(m.shearModulus).f64(m.density).f64(m.workFunction);
    return since(version, 30, 0, 4) ? b.i32(m.type) : b;
}

CBytes interactionBytes(const SDeckInteraction& i)
{
    return CBytes().f64(i.restitution).f64(i.staticFriction).f64(i.rollingFriction);
}

CBytes customPropertyBytes(const SDeckCustomProperties& properties)
{
    CBytes b;
    b.i32(static_cast<qint32>(properties.lists.size())).i32(properties.itemCount);
    if (properties.itemCount == 0) // without items the definitions alone stand, and no list follows
        return b;
    for (const SDeckValueList& list : properties.lists)
        b.i32(list.rows).i32(list.width).group(CBytes().rawF64(list.values), list.deflated);
    return b;
}

CBytes particleDefinitionBytes(const SDeckParticleType& t)
{
    CBytes b;
    b.u32(3141).text(t.name).text(t.materialName).f64(t.rawMass).f64(t.rawVolume);
    b += triple(t.rawInertia);
    b.i32(static_cast<qint32>(t.spheres.size())).i32(t.calcProps);
    for (const SDeckSphere& s : t.spheres)
        b.text(s.name).f64(s.contactRadius).f64(s.physicalRadius) += triple(s.position);
    return b;
}

CBytes particleRowBytes(const SDeckRows& rows)
{
    CBytes b;
    b.i32(rows.count).i32(rows.fields);
    if (rows.count != 0 && rows.fields != 0)
        b.group(rows.arrays, rows.deflated);
    return b;
}

CBytes particleTypeBytes(quint32 version, const SDeckParticleType& type)
{
    CBytes b = particleDefinitionBytes(type) + particleRowBytes(type.rows);
    if (since(version, 21, 0, 0))
        b += customPropertyBytes(type.properties);
    return b;
}

CBytes particleTypesBytes(quint32 version, const SDeckParticleTypes& particles)
{
    CBytes b;
    b.u32(8138).i32(particles.maxId);
    return b += listBytes(particles.types, [=](const auto& type) { return particleTypeBytes(version, type); });
}

CBytes physicsBytes(const SDeckCreator& creator)
{
    const auto modelBytes = [](const SDeckModel& model) {
        return CBytes().text(model.name).i32(model.kind) + model.parameters;
    };
    return listBytes(creator.particleParticle, modelBytes) + listBytes(creator.particleGeometry, modelBytes) +
           listBytes(creator.forces, modelBytes);
}

// ---------------------------------------------------------------- blocks

CBytes creatorBytes(quint32 version, const SDeckCreator& c)
{
    CBytes b = stampBytes(version, c.stamp);
    if (!since(version, 22, 0, 0))
        b.i32(c.legacyStreamFlag);
    b += triple(c.gravity) + triple(c.domainMin) + triple(c.domainMax);
    b.i32(c.periodic[0]).i32(c.periodic[1]).i32(c.periodic[2]);
    b += physicsBytes(c) + particleTypesBytes(version, c.particles);
    b += listBytes(c.materials, [=](const auto& material) {
        return CBytes().text(material.name) + materialBytes(version, material);
    });
    b += listBytes(c.interactions, [](const auto& pair) { return CBytes().text(pair.key) + interactionBytes(pair); });
    b += groupListBytes(version, c.groups);
    b.text(c.title).i32(c.reservedTitleWord).f64(c.damping).text(c.description);
    b.i32(c.limits.velocityRestricted).f64(c.limits.velocityLimit);
    b.i32(c.limits.angularVelocityRestricted).f64(c.limits.angularVelocityLimit);
    return b;
}

CBytes timestepHeadBytes(quint32 version, const SDeckTimestep& t)
{
    CBytes b = stampBytes(version, t.stamp);
    if (since(version, 22, 0, 0))
        b.u32(0xBEEFCAFE).i32(t.isFull).i32(t.timestepMask).i32(t.particleMask).i32(t.geometryMask);
    else
        b.i32(t.fullGeometry);
    if (!since(version, 22, 0, 0) && t.fullGeometry != 0)
        return b += groupListBytes(version, t.groups);
    for (const SDeckGroup& group : t.groups)
        b += groupStateBytes(version, group);
    return b;
}

// ---------------------------------------------------------------- pairs

SDeckPairs::SDeckPairs()
{
    for (std::size_t family = 0; family < 2; ++family) {
        const quint32 mask = family == 0 ? surfaceCollisionMask : geometryCollisionMask;
        contacts[family].collisions.mask = mask;
        collisions[family].mask = mask;
    }
}

CBytes collisionFamilyBytes(const SDeckCollisions& c)
{
    CBytes b;
    b.i32(c.count).i8(c.deflated ? 1 : 0).u32(c.mask);
    return c.count > 0 ? b += packed(c.arrays, c.deflated) : b;
}

static CBytes contactRecordBytes(const SDeckContacts& c)
{
    CBytes b = listBytes(c.records, [](const SDeckContactRecord& record) {
        return CBytes().i32(record.kind).i32(record.type).text(record.name).f64(record.scale) +
               triple(record.defaultValue);
    });
    b.i32(c.recordRows);
    if (!c.records.empty()) {
        b.i8(0);
        for (const SDeckContactRecord& record : c.records)
            b.rawF64(record.values);
    }
    return b;
}

CBytes contactFamilyBytes(quint32 version, const SDeckContacts& c)
{
    CBytes b;
    b.i32(c.count).i8(c.deflated ? 1 : 0);
    if (since(version, 20, 0, 6))
        b.i32(c.fields);
    if (since(version, 20, 0, 17))
        b.i8(c.collisionsActive);
    if (c.count > 0)
        b += packed(c.arrays, c.deflated);
    if (since(version, 20, 0, 17)) {
        b += collisionFamilyBytes(c.collisions);
        b.block(2, contactRecordBytes(c));
    }
    if (since(version, 22, 1, 1))
        b += customPropertyBytes(c.properties);
    return b;
}

CBytes bondFamilyBytes(const SDeckBonds& bonds)
{
    return CBytes().i32(bonds.count).i8(bonds.deflated ? 1 : 0) + packed(bonds.arrays, bonds.deflated);
}

CBytes pairBytes(quint32 version, const SDeckPairs& pairs)
{
    const CBytes contacts =
        contactFamilyBytes(version, pairs.contacts[0]) + contactFamilyBytes(version, pairs.contacts[1]);
    CBytes b;
    if (since(version, 20, 0, 17)) {
        b.block(3, contacts);
        b.block(1, collisionFamilyBytes(pairs.collisions[0]) + collisionFamilyBytes(pairs.collisions[1]));
    }
    else if (since(version, 20, 0, 2))
        b.i32(0) += contacts;
    if (since(version, 21, 0, 2))
        b.block(4, bondFamilyBytes(pairs.bonds[0]) + bondFamilyBytes(pairs.bonds[1]));
    return b;
}

CBytes timestepTailBytes(quint32 version, const SDeckTimestep& t)
{
    CBytes b;
    b.f64(t.time).f64(t.elapsedTime).i32(t.runNumber).text(t.date);
    const SDeckEnergy& e = t.energy;
    b.f64s({e.kinetic, e.potential, e.createdParticles, e.destroyedParticles, e.external, e.lostThroughContacts,
            e.lostThroughCapping});
    b += triple(e.totals);
    b += listBytes(t.removed, [](const auto& type) { return CBytes().text(type.first).i32(type.second); });
    if (since(version, 23, 0, 0))
        b += customPropertyBytes(t.properties);
    return b;
}

CBytes pluginFactoryBytes(quint32 version, const std::vector<SDeckPluginFactory>& factories)
{
    return listBytes(factories, [=](const SDeckPluginFactory& factory) {
        const CBytes b = CBytes().text(factory.kind).text(factory.name);
        return since(version, 23, 0, 0) ? b + CBytes().text(factory.library) : b;
    });
}

CBytes timestepBytes(quint32 version, const SDeckTimestep& t)
{
    CBytes b = timestepHeadBytes(version, t) + particleTypesBytes(version, t.particles) + pairBytes(version, t.pairs);
    b += pluginFactoryBytes(version, t.pluginFactories);
    return b += timestepTailBytes(version, t);
}

// ---------------------------------------------------------------- contents

int deckRowBytes(int bit)
{
    static const int bytes[] = {4, 24, 24, 32, 24, 8, 56, 56, 56, 0, 0, 8, 24};
    return bit < 13 ? bytes[bit] : 0;
}

double deckValue(int firstId, int bit, int row, int component)
{
    return firstId + row + 0.125 * component + 1.0 / (bit + 3);
}

static std::vector<double> deckValues(int first, int bit, std::size_t rows, int width)
{
    std::vector<double> values;
    for (std::size_t row = 0; row < rows; ++row)
        for (int component = 0; component < width; ++component)
            values.push_back(deckValue(first, bit, static_cast<int>(row), component));
    return values;
}

static std::vector<qint32> deckWords(qint32 first, std::size_t rows)
{
    std::vector<qint32> words;
    for (std::size_t row = 0; row < rows; ++row)
        words.push_back(first + static_cast<qint32>(row));
    return words;
}

SDeckRows makeDeckRows(int firstId, int count, qint32 fields, bool deflated)
{
    SDeckRows rows;
    rows.count = count;
    rows.fields = fields;
    rows.deflated = deflated;
    const auto n = static_cast<std::size_t>(count);
    if (fields & 1)
        rows.arrays.rawI32(deckWords(firstId, n));
    for (int bit = 1; bit < 13; ++bit)
        if ((fields & (1 << bit)) != 0)
            rows.arrays.rawF64(deckValues(firstId, bit, n, deckRowBytes(bit) / 8));
    return rows;
}

SDeckValueList makeDeckValues(double first, int rows, int width, bool deflated)
{
    SDeckValueList list;
    list.rows = rows;
    list.width = width;
    list.deflated = deflated;
    for (int i = 0; i < rows * width; ++i)
        list.values.push_back(first + i);
    return list;
}

static CBytes rawPairs(const std::vector<SDeckPair>& pairs)
{
    std::vector<qint32> words;
    for (const SDeckPair& pair : pairs)
        for (const quint32 word : pair)
            words.push_back(static_cast<qint32>(word));
    return CBytes().rawI32(words);
}

CBytes contactArrays(int first, const std::vector<SDeckPair>& pairs, const std::vector<double>& overlaps, qint32 fields)
{
    const std::size_t n = pairs.size();
    CBytes b;
    const auto has = [fields](int bit) { return (fields & (1 << bit)) != 0; };
    if (has(0))
        b += rawPairs(pairs);
    for (const int bit : {1, 2, 3, 4})
        if (has(bit))
            b.rawF64(deckValues(first, bit, n, 3));
    if (has(5))
        b.rawF64(overlaps);
    for (const int bit : {6, 13, 7})
        if (has(bit))
            b.rawF64(deckValues(first, bit, n, 3));
    if (has(12))
        b.rawI32(deckWords(12000, n));
    if (has(13))
        b.rawF64(std::vector<double>(3 * n, 1e300));
    if (has(14))
        b.rawI32(deckWords(14000, n));
    if (has(11))
        b.rawF64(deckValues(first, 11, n, 1));
    return b;
}

SDeckContacts makeDeckContacts(int first, const std::vector<SDeckPair>& pairs, const std::vector<double>& overlaps,
                               qint32 fields, bool deflated)
{
    SDeckContacts contacts;
    contacts.count = static_cast<int>(pairs.size());
    contacts.fields = fields;
    contacts.arrays = contactArrays(first, pairs, overlaps, fields);
    contacts.deflated = deflated;
    return contacts;
}

SDeckCollisions makeDeckCollisions(int first, int count, quint32 mask, bool deflated)
{
    // In the order of the file: the bit, and how many doubles a row has; 0 for a word.
    static const int arrays[][2] = {{0, 0},  {1, 1},  {7, 3},  {3, 3},  {4, 3},  {5, 3},  {6, 3},  {2, 1},  {8, 0},
                                    {9, 1},  {10, 1}, {11, 3}, {12, 3}, {13, 0}, {14, 3}, {15, 3}, {16, 1}, {17, 3},
                                    {18, 4}, {19, 0}, {20, 3}, {21, 3}, {22, 1}, {23, 3}, {24, 4}};
    const auto rows = static_cast<std::size_t>(count);
    SDeckCollisions collisions;
    collisions.count = count;
    collisions.mask = mask;
    collisions.deflated = deflated;
    for (const auto& [bit, width] : arrays) {
        if ((mask & (1u << bit)) == 0)
            continue;
        if (width > 0)
            collisions.arrays.rawF64(deckValues(first, bit, rows, width));
        else
            collisions.arrays.rawI32(deckWords(first + (bit == 13 ? 100 : bit == 19 ? 200 : bit), rows));
    }
    return collisions;
}

SDeckBonds makeDeckBonds(int first, const std::vector<SDeckPair>& pairs, const std::vector<qint32>& states,
                         bool deflated)
{
    SDeckBonds bonds;
    bonds.count = static_cast<int>(pairs.size());
    bonds.deflated = deflated;
    bonds.arrays = rawPairs(pairs);
    for (const int bit : {1, 2, 3, 4})
        bonds.arrays.rawF64(deckValues(first, bit, pairs.size(), 3));
    bonds.arrays.rawI32(states);
    std::vector<double> times;
    for (std::size_t row = 0; row < pairs.size(); ++row)
        times.push_back(0.5 + static_cast<double>(row));
    bonds.arrays.rawF64(times);
    return bonds;
}

static SDeckParticleTypes sampleTypes()
{
    SDeckParticleType ball;
    ball.name = "Ball";
    ball.materialName = "glass";
    ball.spheres = {{"surface 0", 0.0016, 0.0015, {0.0, 0.0, 0.0}}};
    SDeckParticleType oval;
    oval.name = "Oval (größer)";
    oval.materialName = "seed";
    oval.rawMass = 2e-5;
    oval.rawInertia = {2e-12, 3e-12, 4e-12};
    oval.calcProps = 0;
    oval.spheres = {{"left", 0.001, 0.001, {-0.0005, 0.0, 0.0}}, {"right", 0.0011, 0.001, {0.0005, 0.0, 0.0}}};
    SDeckParticleTypes particles;
    particles.types = {ball, oval};
    return particles;
}

SDeckCreator sampleCreator()
{
    SDeckCreator c;
    c.periodic = {0, 1, 0};
    c.particles = sampleTypes();
    c.materials = {{"glass", 0.3, 1.9e6, 2500.0, 4.5}, {"seed", 0.25, 3.2e6, 1400.0, 0.0}};
    c.interactions = {{"glass~glass", 0.5, 0.5, 0.02}, {"glass~seed", 0.45, 0.4, 0.02}, {"seed~seed", 0.4, 0.35, 0.02}};
    c.title = "Kiste";
    c.damping = 0.25;
    c.limits = {1, 12.5, 0, 80.0};
    return c;
}

SDeckTimestep sampleTimestep(double time)
{
    SDeckTimestep t;
    t.particles = sampleTypes();
    t.particles.maxId = 72;
    t.particles.types[0].rows = makeDeckRows(1, 60, deckFields, true);
    t.particles.types[1].rows = makeDeckRows(61, 12);
    t.time = time;
    t.elapsedTime = 100.0 * time;
    t.runNumber = 3;
    t.energy = {1.5, 2.5, 3.5, 4.5, 5.5, 6.5, 7.5, {8.5, 9.5, 10.5}};
    t.removed = {{"Oval (größer)", 2}, {"Ball", 1}};
    return t;
}

// ---------------------------------------------------------------- the files

CLegacyDeck::CLegacyDeck(quint32 version) : version(version), firstVersion(version), lastVersion(version), segments(1)
{}

CBytes CLegacyDeck::header() const
{
    const int count = announcedTimesteps >= 0 ? announcedTimesteps : static_cast<int>(timesteps.size());
    CBytes b;
    return b.u32(firstVersion).u32(lastVersion).i32(count).u32(reservedFlag).u32(0).u32(0).u32(0).u32(edition);
}

SDeckPlace CLegacyDeck::append(const CBytes& block)
{
    SDeckPlace place;
    place.segment = static_cast<quint32>(segments.size() - 1);
    place.offset = static_cast<quint64>(segments.back().size() + (place.segment == 0 ? header().size() : 0));
    place.size = static_cast<quint64>(block.size());
    segments.back() += block;
    return place;
}

CLegacyDeck& CLegacyDeck::creator(const SDeckCreator& creator)
{
    CBytes block;
    block.text("class CGenericData") += creatorBytes(version, creator);
    creators.push_back(append(block));
    return *this;
}

CLegacyDeck& CLegacyDeck::timestep(const SDeckTimestep& timestep)
{
    const SDeckPlace& model = creators.at(creators.size() - 1);
    CBytes block;
    if (timestep.shortOffset)
        block.text("class CTimestepData").u32(model.segment).u32(static_cast<quint32>(model.offset));
    else
        block.text("class CTimestepData64").u32(model.segment).u64(model.offset);
    block += timestepBytes(version, timestep);
    timesteps.push_back(append(block));
    entries.push_back({timestep.time, timestep.isFull});
    return *this;
}

CLegacyDeck& CLegacyDeck::nextSegment()
{
    segments.emplace_back();
    return *this;
}

CBytes CLegacyDeck::index() const
{
    CBytes b;
    b.u32(static_cast<quint32>(timesteps.size()));
    for (std::size_t i = 0; i < timesteps.size(); ++i) {
        b.f64(entries[i].time).u32(timesteps[i].segment);
        if (lastVersion < makeVersion(20, 0, 22))
            b.u32(static_cast<quint32>(timesteps[i].offset));
        else
            b.u64(timesteps[i].offset);
        if (lastVersion >= makeVersion(22, 0, 0))
            b.i32(entries[i].isFull);
    }
    return b;
}

CBytes CLegacyDeck::segment(int number) const
{
    const CBytes& blocks = segments.at(static_cast<std::size_t>(number));
    return number == 0 ? header() + blocks : blocks;
}

QString CLegacyDeck::write(const QString& folder, const QString& name) const
{
    const QString path = folder + '/' + name + ".dem";
    for (int number = 0; number < segmentCount(); ++number)
        segment(number).toFile(number == 0 ? path : path + ".scn." + QString::number(number));
    index().toFile(folder + '/' + name + ".idx");
    return path;
}

CLegacyDeck sampleDeckOf(quint32 version, bool modelChanges)
{
    SDeckCreator model = sampleCreator();
    CLegacyDeck deck(version);
    deck.creator(model).timestep(sampleTimestep(0.1)).timestep(sampleTimestep(0.2));
    if (modelChanges) {
        model.title = "Kiste, verändert";
        deck.creator(model);
    }
    deck.timestep(sampleTimestep(0.3));
    return deck;
}

} // namespace NBrenmark
