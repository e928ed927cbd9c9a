#include "install/extraction.h"

#include "app/install_state.h"
#include "base/paths.h"
#include "install/directories.h"
#include "install/setup_messages.h"
#include "install/zip/entry_name.h"
#include "install/zip/zip_reader.h"
#include "report/log/logger.h"

namespace vanta {
namespace {

bool Refuse(SetupStatus status) {
  PostSetupStatus(status);
  return false;
}

// The folders are made level by level, and the path functions take no "/" for a separator.
String AsFolderPath(String path) {
  path = ReplaceAll(path, TEXT("/"), TEXT("\\"));
  while (path.ends_with(TEXT('\\'))) path.pop_back();
  return path;
}

// Whether the path functions would leave a name as it is, and its file directly below what they are given.
bool IsPlain(StringView name) {
  return !name.empty() && name[0] != TEXT('.') && name.find_first_of(TEXT("\\:")) == StringView::npos;
}

class Extraction {
 public:
  Extraction(ZipReader* archive, const String& directory)
      : archive_(archive), directory_(directory), plain_parent_(ParentPath(JoinPath(directory, TEXT("x")))) {}

  bool Run() {
    ZipEntryInfo info = {};
    if (GetEntry(archive_, -1, &info) != ZipOk) return Refuse(SetupStatus::ErrorEmbeddedFile);
    const LONG count = info.index;
    for (LONG i = 0; i < count; ++i) {
      if (GetInstallState().stop_requested) return false;
      if (GetEntry(archive_, i, &info) != ZipOk) return Refuse(SetupStatus::ErrorUnzip);
      if (!ExtractEntry(info, count)) return false;
    }
    return true;
  }

 private:
  bool ExtractEntry(const ZipEntryInfo& info, LONG count) {
    const bool is_folder = info.attributes & FILE_ATTRIBUTE_DIRECTORY;
    PlaceEntry(info.name);
    // Nearly every entry has the same parent as the one before it.
    if (parent_.empty() || parent_ != last_parent_) {
      // For a name that will be refused, the folders on its way are not made either.
      if (!IsExtractableName(info.name)) {
        return Refuse(is_folder ? SetupStatus::ErrorCreateDir : SetupStatus::ErrorWriteFile);
      }
      if (!EnsureParent()) return Refuse(SetupStatus::ErrorCreateDir);
    }
    if (is_folder) return MakeFolder(info.name);
    if (ExtractToFile(archive_, info.index, target_.c_str()) != ZipOk) return Refuse(SetupStatus::ErrorWriteFile);
    PostSetupProgress(info.index * 100 / count);
    return true;
  }

  void PlaceEntry(StringView name) {
    if (IsPlain(name) && !plain_parent_.empty() && plain_parent_.size() + 1 + name.size() < MAX_PATH) {
      parent_ = target_ = plain_parent_;
      if (target_.back() != TEXT('\\')) target_ += TEXT('\\');
      target_ += name;
    } else {
      target_ = JoinPath(directory_, name);
      parent_ = ParentPath(target_);
    }
  }

  bool EnsureParent() {
    if (!PathExists(parent_) && !MakeDirectories(parent_)) return false;
    last_parent_ = parent_;
    return true;
  }

  bool MakeFolder(StringView name) {
    if (PathExists(target_)) return true;
    if (IsExtractableName(name) && MakeDirectories(AsFolderPath(target_))) return true;
    return Refuse(SetupStatus::ErrorCreateDir);
  }

  ZipReader* const archive_;
  const String& directory_;
  const String plain_parent_;  // of the plain names
  String target_;
  String parent_;
  String last_parent_;
};

}  // namespace

bool EnsureInstallDirectory() {
  const String directory = GetInstallDirectory();
  if (PathExists(directory) || MakeDirectories(directory)) return true;
  Log(kSetupLogTag, TEXT("extractInstallerFiles create dir[%s] error"), directory);
  PostSetupStatus(SetupStatus::ErrorCreateDir);
  Log(kSetupLogTag, TEXT("extractInstallerFiles create dir error"));
  return false;
}

bool extractInstallerFiles(const String& directory) { return Extraction(GetInstallState().payload, directory).Run(); }

}  // namespace vanta
