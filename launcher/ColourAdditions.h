#pragma once

#include "launcher/Additions.h"
#include "launcher/EncoderAbilities.h"

void addLimitedRange(const MovieFacts& movie, const EncoderAbilities& encoder, Additions& add);
void addOrdinaryColours(const MovieFacts& movie, const EncoderAbilities& encoder, Additions& add);
