#include "CQvKsVersion.h"

#include <QStringList>

namespace {
// The version written into every ".scn" file this build exports.
constexpr int kMajor = 3;
constexpr int kMinor = 2;
constexpr int kPatch = 0;
constexpr int kMaxPart = 99999;
} // namespace

CQvKsVersion::CQvKsVersion()
    : m_major(kMajor)
    , m_minor(kMinor)
    , m_patch(kPatch)
{ }

CQvKsVersion::CQvKsVersion(int major, int minor, int patch)
    : m_major(major)
    , m_minor(minor)
    , m_patch(patch)
{ }

CQvKsVersion CQvKsVersion::Current()
{
    return CQvKsVersion();
}

bool CQvKsVersion::FromString(const QString& text, CQvKsVersion& out)
{
    const QStringList parts = text.trimmed().split(QLatin1Char('.'));
    if (parts.isEmpty() || parts.size() > 3)
        return false;
    int numbers[3] = { 0, 0, 0 };
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QString& part = parts[i];
        if (part.isEmpty() || part.size() > 5)
            return false;
        for (QChar c : part) {
            if (c < QLatin1Char('0') || c > QLatin1Char('9'))
                return false;
        }
        numbers[i] = part.toInt();
        if (numbers[i] > kMaxPart)
            return false;
    }
    out = CQvKsVersion(numbers[0], numbers[1], numbers[2]);
    return true;
}

QString CQvKsVersion::ToString() const
{
    return QStringLiteral("%1.%2.%3").arg(m_major).arg(m_minor).arg(m_patch);
}
