#pragma once

#include <QString>

// The accessory windows' own pictures, into dir: About.BMP, Author.BMP, SecretPlace.JPG.
bool writeAccessoryPictures(const QString& dir, const QString& font);
