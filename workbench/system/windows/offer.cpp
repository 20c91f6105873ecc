#include "workbench/system/offer.h"

constinit const Offer Offer::here = {false, false, false, "powershell"};
