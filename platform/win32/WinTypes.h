#pragma once

// The Win32 names the module's code is written against, mapped onto Qt.
#include <cstdint>

class QObject;

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using BOOL = int;
constexpr BOOL TRUE = 1;
constexpr BOOL FALSE = 0;
// A colour as 0x00BBGGRR. Kept in data everywhere; converted only where painted.
using COLORREF = std::uint32_t;
// A window: any QObject stands in; widget code casts it back to QWidget.
using HWND = QObject*;

constexpr COLORREF RGB(BYTE r, BYTE g, BYTE b)
{
    return COLORREF(r) | (COLORREF(g) << 8) | (COLORREF(b) << 16);
}
constexpr BYTE GetRValue(COLORREF c)
{
    return BYTE(c & 0xFF);
}
constexpr BYTE GetGValue(COLORREF c)
{
    return BYTE((c >> 8) & 0xFF);
}
constexpr BYTE GetBValue(COLORREF c)
{
    return BYTE((c >> 16) & 0xFF);
}

// Dialog and message-box results.
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDABORT = 3;
constexpr int IDRETRY = 4;
constexpr int IDIGNORE = 5;
constexpr int IDYES = 6;
constexpr int IDNO = 7;

// Message-box style bits.
constexpr UINT MB_OK = 0x0;
constexpr UINT MB_OKCANCEL = 0x1;
constexpr UINT MB_YESNOCANCEL = 0x3;
constexpr UINT MB_YESNO = 0x4;
constexpr UINT MB_TYPEMASK = 0xF;
constexpr UINT MB_ICONERROR = 0x10;
constexpr UINT MB_ICONQUESTION = 0x20;
constexpr UINT MB_ICONEXCLAMATION = 0x30;
constexpr UINT MB_ICONINFORMATION = 0x40;
constexpr UINT MB_ICONMASK = 0xF0;
constexpr UINT MB_DEFBUTTON2 = 0x100;
constexpr UINT MB_DEFMASK = 0xF00;
constexpr UINT MB_TASKMODAL = 0x2000;
constexpr UINT MB_SETFOREGROUND = 0x10000;
