#include "workbench/system/offer.h"

constinit const Offer Offer::here = {true, FENDRA_PARTS, true, "bash"};
