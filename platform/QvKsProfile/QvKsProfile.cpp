#include "QvKsProfile.h"

#include "IQvKsAppProfile.h"

#include <QDir>

namespace {

class AppProfile final : public IQvKsAppProfile
{
public:
    QString GetPath() const override { return m_path; }
    void SetPath(const QString& path) { m_path = path; }

private:
    QString m_path;
};

AppProfile& instance()
{
    static AppProfile profile;
    return profile;
}

} // namespace

namespace QvKsProfile {

IQvKsAppProfile* GetAppProfile()
{
    return &instance();
}

void SetProfilePath(const QString& folder)
{
    QString path = folder.isEmpty() ? QString() : QDir::cleanPath(folder);
    instance().SetPath(path);
}

} // namespace QvKsProfile
