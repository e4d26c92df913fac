#include "icons/icons.h"

Zk7Picture* gCustomIconPict = nullptr;
unsigned char gIsRealPicture = 0;
unsigned char gIconServicesAvailable = 1;
