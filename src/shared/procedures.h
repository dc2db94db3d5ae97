#pragma once
// The procedures every window uses: whole text files to and from a text box, list files to
// and from a list box, one INI value, a pause that keeps the windows alive, top-most windows,
// the two window effects and asynchronous wave sounds. They keep no state.
//
// The file and INI procedures ignore every error and never tell the caller; the others let
// errors travel to the calling handler.

#include <QString>

namespace platform {
class Form;
class ListBox;
class TextBox;
} // namespace platform

// Whole file into the box; a missing file empties the box.
void LoadTextFile(platform::TextBox& box, const QString& path);
// The box's text and CR LF, replacing the file.
void SaveTextFile(platform::TextBox& box, const QString& path);
// Appends one item per delimited field. A missing file appends empty items without end (the
// failed loop test lets the loop run on), while messages are still processed.
void LoadListFile(const QString& path, platform::ListBox& list);
// One line per item, each ended by CR LF; no quoting.
void SaveListFile(const QString& path, platform::ListBox& list);
// Lower-cases the caller's key variable; at most 749 characters come back.
QString ReadIniValue(const QString& section, QString& key, const QString& file);
// Writes the key upper-cased.
void WriteIniValue(const QString& section, const QString& key, const QString& value, const QString& file);
// Whole seconds, from a start rounded to the nearest second, processing messages meanwhile.
void Pause(long seconds);
void StayOnTop(platform::Form& window);
void RandomLinesEffect(platform::Form& window);
void SqueezeStretchEffect(platform::Form& window);
void PlayWave(const QString& path);
