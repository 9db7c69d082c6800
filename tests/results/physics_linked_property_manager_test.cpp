// The managers of a deck's custom properties follow its contact models and external forces.
#include "results/physics_linked_property_manager.h"

#include "model/creator_data.h"
#include "model/factories/plugin_factory.h"
#include "support/log_capture.h"

#include <gtest/gtest.h>

namespace NBrenmark {

/// The physics of a deck and the managers that follow it.
struct SFollowed
{
    SFollowed()
    {
        for (CPhysicsLinkedCustomPropertyManager* manager : {&particle, &contact, &geometry, &simulation})
            physics.addListener(manager);
    }
    bool add(const char* name, int index = CPhysicsModels::atEnd, quint32 modelType = eSphereSphereModel)
    {
        return physics.addContactModel(createContactModel(name, modelType, eBuiltInModel), index);
    }
    bool addForce(const char* name)
    {
        return physics.addExternalForce(createExternalForce(name, eBuiltInModel, nullptr), CPhysicsModels::atEnd);
    }
    /// "name xREFERENCES" of a manager's properties, in order.
    static std::string defined(const CCustomPropertyManager& manager)
    {
        std::string text;
        for (unsigned int index = 0; index < manager.propertyCount(); ++index)
            text += (text.empty() ? "" : ", ") + manager.property(index)->name + " x" +
                    std::to_string(manager.property(index)->referenceCount);
        return text;
    }

    CPhysicsLinkedCustomPropertyManager particle{"Particle Properties", eParticleOwner};
    CPhysicsLinkedCustomPropertyManager contact{"Contact Properties", eContactOwner};
    CPhysicsLinkedCustomPropertyManager geometry{"Geometry Properties", eGeometryOwner};
    CPhysicsLinkedCustomPropertyManager simulation{"Simulation Properties", eSimulationOwner};
    CPhysicsModels physics;
};

TEST(PhysicsLinkedPropertyManager, definesWhatModelsWorkOnAndCountsThem)
{
    SFollowed deck;
    const auto defined = SFollowed::defined;
    EXPECT_TRUE(deck.add("Hertz-Mindlin with heat conduction"));
    EXPECT_TRUE(deck.addForce("Temperature Update"));
    EXPECT_EQ(defined(deck.particle), "Temperature x2, Heat Flux x2");
    EXPECT_TRUE(deck.add("Tribocharging"));
    EXPECT_TRUE(deck.addForce("Electrostatics"));
    EXPECT_EQ(defined(deck.particle), "Temperature x2, Heat Flux x2, Charge x2, Electrostatic Force x1");
    EXPECT_EQ(defined(deck.geometry), "Charge x2");
    EXPECT_EQ(defined(deck.contact) + defined(deck.simulation), "");
    EXPECT_EQ(deck.particle.finalizedCount(), 0u) << "defined, and no value stored";
    const CCustomPropertyMetaData& flux = *deck.particle.property("Heat Flux");
    EXPECT_EQ(flux.numberOfElements, 2u);
    EXPECT_EQ(flux.unitsType, 21u);
    EXPECT_EQ(flux.initialValue(1), 0.0);

    // One model in place of another: one reference less, and no definition goes.
    EXPECT_TRUE(deck.add("Leeds Elastic-Plastic Adhesion", 1));
    EXPECT_EQ(defined(deck.particle), "Temperature x1, Heat Flux x1, Charge x2, Electrostatic Force x1");
    EXPECT_EQ(deck.contact.propertyCount(), 4u);
    deck.physics.clear();
    EXPECT_EQ(defined(deck.particle), "Temperature x0, Heat Flux x0, Charge x0, Electrostatic Force x0");
    EXPECT_TRUE(deck.add("Hertz-Mindlin with heat conduction"));
    EXPECT_EQ(defined(deck.particle), "Temperature x1, Heat Flux x1, Charge x0, Electrostatic Force x0");
}

TEST(PhysicsLinkedPropertyManager, keepsModelsOutWhosePropertiesClash)
{
    struct SCase
    {
        const char* property;
        unsigned int type, elements, units;
        bool taken;
    };
    const SCase cases[] = {
        {"Charge", 0, 1, 10, true}, {"Charge", 1, 1, 10, false}, {"Charge", 0, 2, 10, false},
        {"Charge", 0, 1, 9, false}, {"charge", 1, 7, 0, true}, // another name
    };
    for (const SCase& c : cases) {
        SFollowed deck;
        auto own = std::make_unique<CCustomPropertyMetaData>(c.property, c.type, c.elements, c.units);
        ASSERT_TRUE(deck.particle.addProperty(own));
        EXPECT_EQ(deck.add("Tribocharging"), c.taken) << c.type << c.elements << c.units;
        EXPECT_EQ(deck.physics.hasTribocharging(), c.taken);
        const CCustomPropertyMetaData& kept = *deck.particle.property(c.property);
        EXPECT_EQ(kept.dataType, c.type);
        EXPECT_EQ(kept.numberOfElements, c.elements);
        EXPECT_EQ(kept.unitsType, c.units);
        if (!c.taken) {
            EXPECT_EQ(SFollowed::defined(deck.particle), "Charge x0");
            EXPECT_EQ(SFollowed::defined(deck.geometry), "") << "refused by one manager, taken by none";
        }
    }
}

TEST(PhysicsLinkedPropertyManager, reportsTheRefusalInTheLog)
{
    SFollowed deck;
    for (const char* name : {"Temperature", "Heat Flux"}) {
        auto own = std::make_unique<CCustomPropertyMetaData>(name, eBooleanProperty, 5u, 20u);
        deck.particle.addProperty(own);
    }
    RequiredProperties required;
    for (const char* name : {"Wear_2", "Wear", ""}) // two of them no names that a property may have
        required.push_back(std::make_unique<CCustomPropertyMetaData>(name, eDoubleProperty, 1u, 1u));
    const CLogCapture log;
    EXPECT_FALSE(deck.addForce("Temperature Update"));
    EXPECT_FALSE(deck.contact.accepts(required, "contact model (Sticky)"));
    EXPECT_EQ(log.text(), "ERROR Custom properties: Error loading external force (Temperature Update)\n"
                          "external force (Temperature Update) cannot be loaded.\n"
                          "The following custom properties:\n"
                          "    Temperature\n"
                          "    Heat Flux\n"
                          "\nWill clash with already existing properties, this\n"
                          "external force (Temperature Update)\n"
                          "cannot be loaded.\n"
                          "ERROR Custom properties: Error loading contact model (Sticky)\n"
                          "contact model (Sticky) cannot be loaded.\n"
                          "The following custom properties:\n"
                          "    Wear_2\n"
                          "    \n"
                          "\nHave invalid names, this contact model (Sticky)\n"
                          "cannot be loaded.\n");
}

/// Counts what it hears.
struct SHearing : IPropertyListener
{
    void managerChanged(CCustomPropertyManager&, int value) override { changes.push_back(value); }
    void propertyAdded(CCustomPropertyManager&) override { ++additions; }
    std::vector<int> changes;
    int additions = 0;
};

TEST(PhysicsLinkedPropertyManager, aUserHearsOfStoredValuesWhenItComesAndGoes)
{
    CPhysicsLinkedCustomPropertyManager manager("Contact Properties", eContactOwner);
    const auto wear = [] {
        RequiredProperties required;
        required.push_back(std::make_unique<CCustomPropertyMetaData>("Wear", eDoubleProperty, 1u, 1u));
        return required;
    };
    SHearing first;
    manager.take(wear(), &first);
    EXPECT_TRUE(first.changes.empty()) << "no property has stored values";
    EXPECT_TRUE(manager.isModified());
    manager.lastFinalisedPropertyIndex = 0;
    SHearing second;
    manager.setModified(false);
    manager.take(RequiredProperties(), &second);
    EXPECT_EQ(second.changes, std::vector<int>{0});
    EXPECT_TRUE(manager.isModified());
    manager.setModified(false);
    manager.release(RequiredProperties(), &second);
    EXPECT_EQ(second.changes, (std::vector<int>{0, 0}));
    EXPECT_FALSE(manager.isModified()) << "it needed none";
    manager.release(wear(), &first);
    EXPECT_TRUE(manager.isModified());
    EXPECT_EQ(manager.property("Wear")->referenceCount, 0u);
    manager.notifyChanged(7);
    EXPECT_EQ(first.changes, std::vector<int>{0}) << "gone, it hears nothing more";
}

// ---------------------------------------------------------------- factories of plug-ins

/// A factory as a library would bring it, which works on one property of contacts.
class CFeeder : public IPluginParticleFactoryWrapper
{
public:
    CFeeder(const char* property, int& unloaded) : property(property), unloaded(unloaded) {}

    std::string label() const override { return "plug-in factory (Feeder)"; }
    RequiredProperties requiredProperties(unsigned int ownerType) const override
    {
        RequiredProperties required;
        if (ownerType == eContactOwner)
            required.push_back(std::make_unique<CCustomPropertyMetaData>(property, eDoubleProperty, 1u, 1u));
        return required;
    }
    bool setupPlugin(std::unique_ptr<QLibrary>, const QString&, CPluginParticleFactoryList*) override { return true; }
    void unloadPlugin() override { ++unloaded; }
    bool starting() override { return true; }
    void stopping() override {}
    bool createParticle(double, const CParticleTypes&, NApiFactory::SNewParticle&, bool&) override { return true; }
    QString typeWord() const override { return "library"; }
    QString displayName() const override { return "Feeder"; }
    std::unique_ptr<CParticleFactory> clone() const override { return nullptr; }
    bool isComplete() const override { return false; }
    bool isMassCreation() const override { return false; }

private:
    const char* property;
    int& unloaded;
};

TEST(PhysicsLinkedPropertyManager, followsTheFactoriesOfPlugIns)
{
    SFollowed deck;
    int unloaded = 0;
    const auto feeder = [&](const char* property) { return std::make_unique<CFeeder>(property, unloaded); };
    {
        CPluginParticleFactoryList list;
        list.addListener(&deck.contact);
        list.addListener(&deck.particle);
        EXPECT_TRUE(list.add(feeder("Feed")));
        EXPECT_TRUE(list.add(feeder("Feed")));
        EXPECT_EQ(SFollowed::defined(deck.contact), "Feed x2");
        EXPECT_EQ(SFollowed::defined(deck.particle), "");
        const CLogCapture log;
        EXPECT_FALSE(list.add(feeder("Feed_2")));
        EXPECT_EQ(log.text(), "ERROR Custom properties: Error loading plug-in factory (Feeder)\n"
                              "plug-in factory (Feeder) cannot be loaded.\n"
                              "The following custom properties:\n"
                              "    Feed_2\n"
                              "\nHave invalid names, this plug-in factory (Feeder)\n"
                              "cannot be loaded.\n");
        EXPECT_EQ(list.count(), 2u);
        EXPECT_EQ(unloaded, 1) << "the one that was refused";
        list.removeFactory(0);
        list.removeFactory(7);
        EXPECT_EQ(list.factory(1), nullptr);
        EXPECT_EQ(SFollowed::defined(deck.contact), "Feed x1");
    }
    EXPECT_EQ(SFollowed::defined(deck.contact), "Feed x0") << "and the definition stays";
    EXPECT_EQ(unloaded, 3);
}

} // namespace NBrenmark
