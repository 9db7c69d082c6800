#pragma once
// The numbers by which contact models and external forces are distinguished in files.

#include <QtGlobal>

namespace NBrenmark {

/// The two chains. They differ in the second element of a contact.
enum EContactModelType : quint32
{
    eSphereSphereModel = 0,
    eSphereGeometryModel = 1
};

/// Where a model comes from; any other value asks for a built-in one first, then a plug-in.
enum EModelSource : quint32
{
    eBuiltInModel = 0,
    ePluginModel = 1
};

} // namespace NBrenmark
