// Units: odd factors against the digits that reports have always had, and a way there and back for all of them.
#include "units/units_converter.h"

#include <QStringList>
#include <gtest/gtest.h>
#include <cmath>
#include <random>

namespace NBrenmark {

TEST(Units, goThereAndBackWithinTheLastDigits)
{
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> exponent(-12.0, 12.0);
    for (quint32 number = 0; number <= eQuantityCount; ++number) {
        CUnitsConverter& units = getUnits(number);
        for (const int index : units.names.keys()) {
            units.currentIndex = index;
            for (int i = 0; i < 1000; ++i) {
                const double x = (i % 2 == 0 ? 1.0 : -1.0) * std::pow(10.0, exponent(random));
                // What an offset swallows of a small number is lost for good.
                const double size = std::max(std::abs(x), units.quantity.units[static_cast<std::size_t>(index)].offset);
                const double ulp = std::nextafter(size, HUGE_VAL) - size;
                EXPECT_NEAR(units.toBase(units.toDisplay(x)), x, 4.0 * ulp) << units.currentName.toStdString();
            }
        }
        units.currentIndex = 0;
    }
}

TEST(Units, haveTheFactorsOfTheField)
{
    struct SCase
    {
        CUnitsConverter& units;
        int index;
        const char* name;
        double value;
        double base;
    };
    const SCase cases[] = {
        {getUnits(8), 1, "eV", 2.0, 3.2043530628e-19},
        {getUnits(20), 2, "°F", 100.0, 310.9277777777778},
        {getUnits(20), 1, "°C", -273.15, 0.0},
        {CUnitsAccel::instance(), 5, "fpm/s", 1.0, 0.00508},
        {CUnitsVelocity::instance(), 5, "ft/min", 1.0, 0.00508},
        {CUnitsTorque::instance(), 5, "lbf-ft", 1.0, 1.355818},
        {CUnitsMassFlow::instance(), 13, "MetricTonnes/h", 1.0, 0.2777777778},
        {CUnitsHeatFlux::instance(), 1, "J/S", 5.0, 5.0},
        {CUnitsStress::instance(), 2, "lbs/in²", 1.0, 6894.757},
        {CUnitsLength::instance(), 9, "", 5.0, 5.0}, // no such unit
        {getUnits(30), 0, "", 5.0, 5.0},
        {getUnits(0), 0, "", 5.0, 5.0},
    };
    for (const SCase& c : cases) {
        EXPECT_EQ(c.units.names.value(c.index).toStdString(), c.name);
        EXPECT_DOUBLE_EQ(c.units.toBase(c.value, c.index), c.base) << c.name;
    }
    CUnitsMass::instance().currentIndex = 1;
    EXPECT_EQ(CUnitsMass::instance().toDisplay(C3DVector(1, 2, 3)).z, 3000.0);
    CUnitsMass::instance().currentIndex = 0;
}

TEST(Units, takeTheUnitThatTheUserPrefers)
{
    CUnitsConverter& workFunction = CUnitsWorkFunction::instance();
    CUnitsConverter& surfaceEnergy = CUnitsSurfaceEnergy::instance();
    QStringList heard;
    QObject context;
    for (CUnitsConverter* const units : {&workFunction, &surfaceEnergy})
        QObject::connect(units, &CUnitsConverter::updateUnits, &context,
                         [&heard](const QString& name) { heard << name; });
    EXPECT_EQ(workFunction.currentName, "J") << "until the preferences are asked";
    workFunction.refresh();
    surfaceEnergy.refresh();
    EXPECT_EQ(workFunction.currentName, "eV") << "where the user prefers none";
    EXPECT_EQ(heard, QStringList("eV"));
    workFunction.currentIndex = 0;
    workFunction.currentName = "J";
}

} // namespace NBrenmark
