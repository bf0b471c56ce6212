#include "module/pipeline/resource_switch.h"

#include "module/state/module_state.h"
#include "platform/framework/cwinapp.h"

namespace zel::pipeline {

ResourceSwitch::ResourceSwitch(After after) : m_saved(AfxGetModuleState()->m_hCurrentResourceHandle), m_after(after) {
    AfxGetModuleState()->m_hCurrentResourceHandle = g_hZelResource;
}

ResourceSwitch::~ResourceSwitch() {
    if (m_after == After::kRestore) AfxGetModuleState()->m_hCurrentResourceHandle = m_saved;
}

}  // namespace zel::pipeline
