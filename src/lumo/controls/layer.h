// The classes that a control's class is put together from: ControlT, BoxT and the templates over them.
#pragma once

// For their constructors and destructors, which thereby stand where the whole control is made and destroyed, and which
// call nothing between ControlBase's and the finished class's: what a layer holds is in a base of its own, made before
// ControlBase and gone after it. So the layers' tables of virtual functions are never in use, and the compiler leaves
// them out: with their relocations they took 28 KB of the 32-bit program.
#define LUMO_LAYER [[gnu::always_inline]]
