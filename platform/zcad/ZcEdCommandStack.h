#pragma once

// The host's registered commands, in groups. Names are matched without regard to
// case, as users type them; a typed name finds a command by its local name, or by
// its global name (with or without a leading "_").
#include "ZcEdCommand.h"
#include "ZcRxObject.h"
#include "ZcadTypes.h"

#include <QString>

#include <memory>
#include <vector>

class ZcEdUIContext;

class ZcEdCommandStack : public ZcRxObject
{
    ZCRX_DECLARE_MEMBERS(ZcEdCommandStack)
public:
    ZcEdCommandStack();
    ~ZcEdCommandStack() override;

    // eDuplicateKey when the group already has a command of that global or local
    // name; eInvalidInput for empty names or a null function.
    Zcad::ErrorStatus addCommand(const ZTCHAR* cmdGroupName, const ZTCHAR* cmdGlobalName,
        const ZTCHAR* cmdLocalName, int commandFlags, ZcRxFunctionPtr functionAddr,
        ZcEdUIContext* uiContext = nullptr, int fcode = -1, void* hResourceHandle = nullptr,
        ZcEdCommand** cmdPtrRet = nullptr);
    Zcad::ErrorStatus addCommand(const QString& group, const QString& globalName, const QString& localName,
        int commandFlags, ZcRxFunctionPtr functionAddr);

    // By local name, then by global name (a leading "_" asks for the global name only).
    ZcEdCommand* lookupCmd(const QString& typedName) const;
    ZcEdCommand* lookupGlobalCmd(const QString& globalName) const;
    ZcEdCommand* lookupLocalCmd(const QString& localName) const;

    // Runs the command a user typed. False when no command has that name.
    bool invoke(const QString& typedName) const;

    Zcad::ErrorStatus removeCmd(const QString& group, const QString& globalName);
    Zcad::ErrorStatus removeGroup(const ZTCHAR* groupName);
    Zcad::ErrorStatus removeGroup(const QString& groupName);
    // Drops every command that `app` added while it was initialised: its code is
    // about to leave the process.
    int removeCommandsOf(void* app);

    std::vector<const ZcEdCommand*> commands() const;

private:
    std::vector<std::unique_ptr<ZcEdCommand>> m_commands;
};

// The host's command stack (the registry entry "ZCAD_REGISTERED_COMMANDS").
ZcEdCommandStack* zcedRegCmds();
