#pragma once

#include "launcher/Additions.h"
#include "launcher/EncoderAbilities.h"

// Rules about which picture, its shape and its pace; and about what is known of the movie.

void addPicture(const MovieFacts& movie, const EncoderAbilities& encoder, Additions& add);
void addSubtitles(const MovieFacts& movie, const EncoderAbilities& encoder, Additions& add);
void addTags(const MovieFacts& movie, const EncoderAbilities& encoder, Additions& add);
void addShape(const MovieFacts& movie, const EncoderAbilities& encoder, Additions& add);
void addPace(const MovieFacts& movie, const EncoderAbilities& encoder, Additions& add);

/// The shape of the output's pixels that keeps the movie's shape; 1:1 where they are as good as
/// square.
[[nodiscard]] Ratio outputPixelShape(const TrackFacts& picture, int width, int height);

/// Pictures a second of the output; unknown where nothing sensible can be said.
[[nodiscard]] Ratio outputRate(const TrackFacts& picture);
