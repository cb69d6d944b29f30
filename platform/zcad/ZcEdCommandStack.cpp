#include "ZcEdCommandStack.h"

#include "ZcRxDictionary.h"
#include "ZcRxDynamicLinker.h"

#include <algorithm>

ZCRX_DEFINE_MEMBERS(ZcEdCommandStack, ZcRxObject)

namespace {
QString fromZ(const ZTCHAR* text)
{
    return text ? QString::fromUtf16(text) : QString();
}

bool sameName(const QString& a, const QString& b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

// Global names are the same with or without the leading "_" that marks them.
bool sameGlobalName(QStringView a, QStringView b)
{
    if (a.startsWith(u'_'))
        a = a.mid(1);
    if (b.startsWith(u'_'))
        b = b.mid(1);
    return a.compare(b, Qt::CaseInsensitive) == 0;
}
} // namespace

ZcEdCommandStack::ZcEdCommandStack() = default;
ZcEdCommandStack::~ZcEdCommandStack() = default;

Zcad::ErrorStatus ZcEdCommandStack::addCommand(const ZTCHAR* cmdGroupName, const ZTCHAR* cmdGlobalName,
    const ZTCHAR* cmdLocalName, int commandFlags, ZcRxFunctionPtr functionAddr, ZcEdUIContext*, int fcode,
    void* hResourceHandle, ZcEdCommand** cmdPtrRet)
{
    const QString group = fromZ(cmdGroupName);
    const QString globalName = fromZ(cmdGlobalName);
    const QString localName = cmdLocalName ? fromZ(cmdLocalName) : globalName;
    if (group.isEmpty() || globalName.isEmpty() || localName.isEmpty() || !functionAddr)
        return Zcad::eInvalidInput;
    for (const auto& command : m_commands)
        if (sameName(command->groupName(), group)
            && (sameName(command->globalName(), globalName) || sameName(command->localName(), localName)))
            return Zcad::eDuplicateKey;
    void* owner = ZcRxDynamicLinker::initialisingApp();
    m_commands.push_back(std::make_unique<ZcEdCommand>(
        group, globalName, localName, commandFlags, functionAddr, fcode, hResourceHandle, owner));
    if (cmdPtrRet)
        *cmdPtrRet = m_commands.back().get();
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcEdCommandStack::addCommand(const QString& group, const QString& globalName,
    const QString& localName, int commandFlags, ZcRxFunctionPtr functionAddr)
{
    const auto z = [](const QString& s) { return reinterpret_cast<const ZTCHAR*>(s.utf16()); };
    return addCommand(z(group), z(globalName), z(localName), commandFlags, functionAddr);
}

ZcEdCommand* ZcEdCommandStack::lookupGlobalCmd(const QString& globalName) const
{
    // Latest registration first, as a command defined later overrides.
    for (auto it = m_commands.rbegin(); it != m_commands.rend(); ++it)
        if (sameGlobalName((*it)->globalName(), globalName))
            return it->get();
    return nullptr;
}

ZcEdCommand* ZcEdCommandStack::lookupLocalCmd(const QString& localName) const
{
    for (auto it = m_commands.rbegin(); it != m_commands.rend(); ++it)
        if (sameName((*it)->localName(), localName))
            return it->get();
    return nullptr;
}

ZcEdCommand* ZcEdCommandStack::lookupCmd(const QString& typedName) const
{
    const QString name = typedName.trimmed();
    if (name.isEmpty())
        return nullptr;
    if (name.startsWith(u'_'))
        return lookupGlobalCmd(name);
    if (ZcEdCommand* command = lookupLocalCmd(name))
        return command;
    return lookupGlobalCmd(name);
}

bool ZcEdCommandStack::invoke(const QString& typedName) const
{
    const ZcEdCommand* command = lookupCmd(typedName);
    if (!command)
        return false;
    command->functionAddr()();
    return true;
}

Zcad::ErrorStatus ZcEdCommandStack::removeCmd(const QString& group, const QString& globalName)
{
    const auto it = std::find_if(m_commands.begin(), m_commands.end(), [&](const auto& command) {
        return sameName(command->groupName(), group) && sameName(command->globalName(), globalName);
    });
    if (it == m_commands.end())
        return Zcad::eKeyNotFound;
    m_commands.erase(it);
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcEdCommandStack::removeGroup(const ZTCHAR* groupName)
{
    return removeGroup(fromZ(groupName));
}

Zcad::ErrorStatus ZcEdCommandStack::removeGroup(const QString& groupName)
{
    const auto removed = std::erase_if(
        m_commands, [&](const auto& command) { return sameName(command->groupName(), groupName); });
    return removed ? Zcad::eOk : Zcad::eKeyNotFound;
}

int ZcEdCommandStack::removeCommandsOf(void* app)
{
    if (!app)
        return 0;
    return int(std::erase_if(m_commands, [&](const auto& command) { return command->ownerApp() == app; }));
}

std::vector<const ZcEdCommand*> ZcEdCommandStack::commands() const
{
    std::vector<const ZcEdCommand*> list;
    for (const auto& command : m_commands)
        list.push_back(command.get());
    return list;
}

ZcEdCommandStack* zcedRegCmds()
{
    return ZcEdCommandStack::cast(zcrxSysRegistry()->at(ZCRX_COMMAND_DOCK));
}
