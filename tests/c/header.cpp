#include "velmora/c/velmora.h"
