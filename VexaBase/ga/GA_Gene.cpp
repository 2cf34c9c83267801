#include "VexaBase/ga/GA_Gene.h"

GA_Gene* GA_Gene::Clone() const { return nullptr; }
