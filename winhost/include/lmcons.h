// Lengths of network and account names, in characters without terminator.
#pragma once

#define UNLEN 256
#define CNLEN 15
