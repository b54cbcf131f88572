#pragma once

#include "launcher/Additions.h"
#include "launcher/EncoderAbilities.h"

#include <string>

void addSound(const MovieFacts& movie, const EncoderAbilities& encoder, Additions& add);

enum class SoundFate { Copied, Converted, LeftOut };

[[nodiscard]] SoundFate fateOf(const TrackFacts& sound);
