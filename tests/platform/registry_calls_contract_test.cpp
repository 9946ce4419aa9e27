// SPDX-License-Identifier: GPL-3.0-or-later
#include "contract/registry_calls_contract.h"

#include "fakes/memory_registry.h"
#include "fakes/temporary_folder.h"
#include "platform/linux/settings_tree.h"

namespace kivandra::contract {
namespace {

struct TreeInFolder {
  fakes::TemporaryFolder folder;
  linux_impl::SettingsTree tree{folder.File("registry.db")};
};

std::shared_ptr<RegistryCalls> MakeSettingsTree() {
  const auto both = std::make_shared<TreeInFolder>();
  return {both, &both->tree};
}

INSTANTIATE_TEST_SUITE_P(Trees, RegistryCallsContract,
                         ::testing::Values(RegistryUnderTest{"SettingsTree", MakeSettingsTree},
                                           RegistryUnderTest{
                                               "MemoryRegistry",
                                               [] { return std::make_shared<fakes::MemoryRegistry>(); }}),
                         [](const auto& tree) { return tree.param.name; });

}  // namespace
}  // namespace kivandra::contract
