#include "module_handles.h"

namespace {

HxModuleHandle instanceHandle = nullptr;
HxModuleHandle resourceHandle = nullptr;

}  // namespace

HxModuleHandle moduleInstance() { return instanceHandle; }
void setModuleInstance(HxModuleHandle instance) { instanceHandle = instance; }

HxModuleHandle globalResInstance() { return resourceHandle; }
void setGlobalResInstance(HxModuleHandle library) { resourceHandle = library; }
