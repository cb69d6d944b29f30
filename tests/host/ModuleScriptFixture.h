#pragma once

// qvhost in the test process with the module loaded, for scripts that drive its
// dialogs; and the electrical codes as the store holds them afterwards.
#include "HostFixture.h"

#include "CISysCode.h"
#include "CSysCodeData.h"

class ModuleScriptFixture : public HostFixture
{
protected:
    QStringList Plugins() const override { return { QStringLiteral(QV_MODULE_PLUGIN) }; }

    static CSysCodeData StoredElectrical()
    {
        CSysCodeData root;
        EXPECT_TRUE(CISysCode::GetSpecCodeInfos(root, QStringLiteral("电气")));
        return root;
    }
};
