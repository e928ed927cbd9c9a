#include "install/payload.h"

#include "app/install_state.h"
#include "base/resource.h"
#include "install/setup_messages.h"
#include "install/zip/zip_reader.h"

namespace vanta {

namespace {

std::string_view PayloadBytes() { return FindOwnResource(MAKEINTRESOURCEW(kPayloadResource), RT_RCDATA); }

}  // namespace

bool openEmbeddedFilesArchive() {
  const std::string_view bytes = PayloadBytes();
  if (bytes.empty()) {
    PostSetupStatus(SetupStatus::ErrorNoEmbeddedFile);
    return false;
  }
  ClosePayload();
  InstallState& state = GetInstallState();
  state.payload = OpenFromMemory(bytes.data(), bytes.size(), nullptr);
  return state.payload != nullptr;
}

void ClosePayload() {
  InstallState& state = GetInstallState();
  if (state.payload) Close(state.payload);
  state.payload = nullptr;
}

bool IsPayloadUnreadable() {
  const std::string_view bytes = PayloadBytes();
  if (bytes.empty()) return false;
  ZipReader* const reader = OpenFromMemory(bytes.data(), bytes.size(), nullptr);
  if (reader) Close(reader);
  return !reader;
}

}  // namespace vanta
