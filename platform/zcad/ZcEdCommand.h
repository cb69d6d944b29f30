#pragma once

// One registered command: its group, global and local names, flags and function.
#include "ZcadTypes.h"

#include <QString>

class ZcEdCommand
{
public:
    ZcEdCommand(const QString& group, const QString& globalName, const QString& localName, int flags,
        ZcRxFunctionPtr function, int functionCode, void* resourceHandle, void* ownerApp)
        : m_group(group)
        , m_globalName(globalName)
        , m_localName(localName)
        , m_flags(flags)
        , m_function(function)
        , m_functionCode(functionCode)
        , m_resourceHandle(resourceHandle)
        , m_ownerApp(ownerApp)
    { }

    QString groupName() const { return m_group; }
    QString globalName() const { return m_globalName; }
    QString localName() const { return m_localName; }
    int commandFlags() const { return m_flags; }
    ZcRxFunctionPtr functionAddr() const { return m_function; }
    int functionCode() const { return m_functionCode; }
    void* resourceHandle() const { return m_resourceHandle; }
    // The application that was being initialised when the command was added, or null.
    void* ownerApp() const { return m_ownerApp; }

private:
    QString m_group;
    QString m_globalName;
    QString m_localName;
    int m_flags;
    ZcRxFunctionPtr m_function;
    int m_functionCode;
    void* m_resourceHandle;
    void* m_ownerApp;
};
