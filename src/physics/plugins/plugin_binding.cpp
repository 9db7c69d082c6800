// One switch for the process, as one deck is open in it at a time.
#include "physics/plugins/plugin_binding.h"

namespace NBrenmark {

static const CPluginBinding* bindingOfProcess = nullptr;

CPluginBinding::CPluginBinding(SPluginFolders folders, IPluginHost& host)
    : folders(std::move(folders)), host(host), before(bindingOfProcess)
{
    bindingOfProcess = this;
}

CPluginBinding::~CPluginBinding() { bindingOfProcess = before; }

const CPluginBinding* CPluginBinding::current() { return bindingOfProcess; }

} // namespace NBrenmark
