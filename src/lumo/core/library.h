// Start and end of the library in a process. UI thread.
#pragma once

namespace lumo {

class ResourceSource;

// In this order: DPI awareness where asked, and with it the process-wide scale; global resources; GDI+; common
// controls; the timer window. Nothing of it can fail the start: without fonts the system's are used, without GDI+
// windows stay empty. `resources` is not owned and must outlive ShutdownLibrary. The string table is loaded by
// `load_texts` between the global resources and GDI+.
void InitLibrary(const ResourceSource& resources, bool dpi_aware, void (*load_texts)());

// After the last window is gone: fonts, GDI+, timers.
void ShutdownLibrary();

}  // namespace lumo
