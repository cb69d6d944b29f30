#pragma once

// ".scn" system-code files: one specialty's code tree as XML, stamped with the
// version of the product that wrote it (attribute "Version" of the root element,
// read and written by QvKsXmlVertion).
//
// Current layout (since 3.0):
//   <SysCodeFile Version="3.2.0" Spec="电气">
//     <Code Name="公共照明" Index="1" Color="255" LineWidth="0.3" Alpha="0"
//           LineStyle="…" LineString="…" HorLayingMode="…" VerLayingMode="…"
//           AddedMsg="…" Describe="…"> <Code …/> … </Code>
//   </SysCodeFile>
//   Color is the COLORREF (0x00BBGGRR) in decimal.
//
// Older layout (before 3.0), converted by CISysCode::UpdataSysData:
//   <SysCodeData Version="2.5.0">
//     <SysNode><Name>…</Name><Index>1</Index><Color>255,0,0</Color><Width>…</Width>
//       <Transparency>…</Transparency><LineType>…</LineType><LineChars>…</LineChars>
//       <HorLay>…</HorLay><VerLay>…</VerLay><PipeInfo>…</PipeInfo><Remark>…</Remark>
//       <SubNodes><SysNode>…</SysNode>…</SubNodes></SysNode>
//   </SysCodeData>
//   Color is "red,green,blue".
//
// Readers refuse DTDs and entity references (no expansion attacks), files over
// kMaxFileBytes, more than kMaxCodes codes, codes deeper than kMaxDepth levels,
// texts over kMaxTextLength, names that break the name rule of every code
// (SysCodeNameRule: control and invisible characters included), sibling codes whose
// names are one once trimmed, and values no cell of the dialog takes
// (SysCodeValueRule). Names are taken trimmed. The root's "Spec" names the specialty
// the file was written for, when the writer gave one.
#include <QLatin1StringView>

namespace ScnFormat {

inline constexpr QLatin1StringView kRoot { "SysCodeFile" };
inline constexpr QLatin1StringView kCode { "Code" };
inline constexpr QLatin1StringView kVersion { "Version" };
inline constexpr QLatin1StringView kLegacyRoot { "SysCodeData" };
inline constexpr QLatin1StringView kLegacyNode { "SysNode" };
inline constexpr QLatin1StringView kLegacyChildren { "SubNodes" };

constexpr qint64 kMaxFileBytes = 64ll * 1024 * 1024;
constexpr int kMaxCodes = 200000;
constexpr int kMaxDepth = 3;
constexpr int kMaxTextLength = 4096;
constexpr int kMaxNameLength = 50;

} // namespace ScnFormat
