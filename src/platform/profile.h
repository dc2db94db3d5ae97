#pragma once
// Private-profile (INI) files with the classic desktop's semantics: section and key names
// compared without regard to case, blanks around names and values trimmed, one pair of
// surrounding quotes removed from a read value, reads cut to the caller's buffer, a written
// key replacing its line in place (whatever its case) or added at the end of its section,
// a missing file or section created. Writes go through a temporary file, so a crash never
// leaves a torn profile.

#include <QString>

#include <optional>

namespace platform {

// The pure rules, on a profile's text.
std::optional<QString> profileValue(const QString& text, const QString& section, const QString& key);
QString profileWithValue(const QString& text, const QString& section, const QString& key,
                         const QString& value);

// Copies at most size - 1 characters of the value (or of defaultValue when there is none)
// into buffer and returns how many it copied.
quint32 GetPrivateProfileStringA(const QString& section, const QString& key,
                                 const QString& defaultValue, QString& buffer, quint32 size,
                                 const QString& fileName);
// Returns false when the file could not be written; the old file is then left as it was.
bool WritePrivateProfileStringA(const QString& section, const QString& key, const QString& value,
                                const QString& fileName);

} // namespace platform
