// Materials.
#include "materials/materials.h"

#include "core/log.h"
#include "core/shortened.h"
#include "core/stop_flag.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "io/dem/repeated_names.h"

namespace NBrenmark {

static constexpr qint64 leastMaterialBytes = 2 * 4 + 3 * 8; // its key, and itself with an empty name

template <class TForm, class TMaterial>
static void materialForm(TForm&& f, TMaterial& m)
{
    f.text(m.name);                                       // counts where it differs from the key
    f.f64(m.poissonsRatio);                               // no unit
    f.f64(m.shearModulus);                                // Pa
    f.f64(m.density);                                     // kg/m^3
    f.f64(m.workFunction, gateCharge, 0.0);               // J; for tribocharging alone
    f.i32(m.type, from(30, 0, 4), qint32(eBulkMaterial)); // 1 bulk, else equipment
}
void CDemCreatorDataReader::readMaterial(CMaterial& material) { materialForm(in(), material); }
void CDemCreatorDataWriter::writeMaterial(const CMaterial& material) { materialForm(out(), material); }

void CDemCreatorDataReader::readMaterialMap(MaterialMap& materials)
{
    CInForm f = in();
    const quint32 count = f.count("material", leastMaterialBytes);
    for (quint32 i = 0; i < count; ++i) {
        leaveIfStopped();
        QString key;
        f.text(key); // what the list calls it
        auto material = std::make_unique<CMaterial>();
        material->read(*this);
        if (key.toStdString() != material->name)
            report(eRepaired, NLogTitle::legacyRead,
                   "The material that is listed as \"" + shortened(key) + "\" calls itself \"" +
                       shortened(material->name) + "\": a current deck keeps this name alone.",
                   1, shortened(material->name));
        if (materials.contains(key))
            reportRepeated("material", key);
        materials.set(key, material.release());
    }
}

void CDemCreatorDataWriter::writeMaterialMap(const MaterialMap& materials)
{
    COutForm f = out();
    f.length("material", leastMaterialBytes, materials);
    for (auto i = materials.constBegin(); i != materials.constEnd(); ++i) {
        f.text(i.key());
        i.value()->write(*this);
    }
}

} // namespace NBrenmark
