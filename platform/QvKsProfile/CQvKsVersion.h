#pragma once

#include <QString>

#include <compare>

// A product version "major.minor.patch". Versions order by their numbers, so 3.10.0
// is newer than 3.9.2; missing parts count as 0 ("3.1" equals "3.1.0").
class CQvKsVersion
{
public:
    // The running application's version.
    CQvKsVersion();
    CQvKsVersion(int major, int minor, int patch);

    // Reads "a", "a.b" or "a.b.c" (blanks around it allowed). Anything else leaves
    // `out` unchanged and returns false.
    static bool FromString(const QString& text, CQvKsVersion& out);
    static CQvKsVersion Current();

    QString ToString() const;
    int Major() const { return m_major; }
    int Minor() const { return m_minor; }
    int Patch() const { return m_patch; }

    friend auto operator<=>(const CQvKsVersion&, const CQvKsVersion&) = default;

private:
    int m_major = 0;
    int m_minor = 0;
    int m_patch = 0;
};
