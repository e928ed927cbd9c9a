// Linux programs that look like Windows images (see pe_image.h for the two forms).
#pragma once

#include "winhost/image/pe_writer.h"

namespace winhost {

// The image of a file of either kind: a PE file itself, or the PE behind a Linux program; none when there is neither.
std::optional<PeImage> OpenImage(Bytes file);

// A Linux program with a resource image behind it. An image that is there already is replaced, its other resources
// kept.
std::optional<FilePlan> PlanAppended(Bytes elf, const ResourceTree& resources, std::string* why);

// A PE file that carries the Linux program or library `elf`, with `resources` (a version, an icon) beside it.
std::optional<FilePlan> WrapHostImage(Bytes elf, const ResourceTree& resources, ResourceImageKind kind);

// The Linux program inside a wrapped image; empty when there is none (a real Windows program).
Bytes HostImage(const PeImage& image);

bool IsElf(Bytes file);

}  // namespace winhost
