// The one processor instruction that the setup asks for.
//
// Promises: the leaves that the machine's fact "cpuid" tells, zeros for every other one and for a machine without a
// processor identification. Linux's own processor is never asked. It cannot fail.
#pragma once

// CPUID: EAX, EBX, ECX and EDX of a leaf.
void __cpuid(int info[4], int leaf);
