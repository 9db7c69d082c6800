#include "physics/plugins/exported_functions.h"

namespace NBrenmark {

std::string paddedPreferenceFile(QLibrary& library, const char* exportName, const SPluginKind& kind,
                                 CPluginErrors& errors)
{
    const auto getName = resolved<NApiCore::GetPaddedFileName>(library, exportName);
    const CPluginBinding* const binding = CPluginBinding::current();
    if (getName == nullptr || binding == nullptr)
        return std::string();
    std::string name(NApiCore::paddedFileNameSize, ' ');
    errors.attempt([&] { getName(name.data()); });
    name.resize(name.find_last_not_of(' ') + 1);
    name.resize(std::min(name.size(), name.find('\0'))); // a library may end it as C does
    return name.empty() ? name : preferenceFolder(binding->folders, kind).toStdString() + name;
}

void reportUnresolved(const char* exportName, CPluginErrors& errors)
{
    errors.report(QString("Cannot resolve function: %1").arg(exportName));
}

bool CPropertyExports::resolve(QLibrary& library, CPluginErrors& errors)
{
    const CPluginBinding* const binding = CPluginBinding::current();
    host = binding != nullptr ? &binding->host : nullptr;
    bool all = true;
    const auto find = [&](auto& function, const char* exportName) {
        function = resolved<std::decay_t<decltype(function)>>(library, exportName);
        if (function != nullptr)
            return;
        reportUnresolved(exportName, errors);
        all = false;
    };
    find(registerProperty, "REGISTERNEWPARTICLEPROPERTY");
    find(getNumber, "GETNUMBEROFREQUIREDPROPERTIES");
    find(getDetails, "GETDETAILSFORPROPERTY");
    return all;
}

void CPropertyExports::clear()
{
    host = nullptr;
    registerProperty = nullptr;
    getNumber = nullptr;
    getDetails = nullptr;
    properties.clear();
}

RequiredProperties CPropertyExports::requiredProperties(unsigned int ownerType, CPluginErrors& errors)
{
    if (ownerType != eParticleOwner || getNumber == nullptr || getDetails == nullptr)
        return {};
    const auto count = [this] {
        unsigned int number = 0;
        getNumber(&number);
        return number;
    };
    const auto ask = [this](unsigned int index, SPluginProperty& property) {
        return getDetails(&index, property.name.data(), &property.dataType, &property.numberOfElements,
                          &property.unitType) != 0;
    };
    return properties.of(ownerType, count, ask, errors);
}

void CPropertyExports::registerIndices(CPluginErrors& errors)
{
    const std::unique_ptr<NApiCore::IApi> api =
        host != nullptr ? host->createApi(NApiCore::eParticleProperties, 1, 0) : nullptr;
    if (api == nullptr || registerProperty == nullptr)
        return;
    const auto& definitions = static_cast<NApiCore::ICustomPropertyManagerApi_1_0&>(*api);
    for (const std::unique_ptr<CCustomPropertyMetaData>& property : requiredProperties(eParticleOwner, errors)) {
        const int index = definitions.getPropertyIndex(property->name.c_str());
        if (index < 0)
            continue;
        const auto unsignedIndex = static_cast<unsigned int>(index);
        errors.attempt([&] { registerProperty(property->name.c_str(), &unsignedIndex); });
    }
}

} // namespace NBrenmark
