#pragma once

// The logical columns of a code's row: ten, of which the three pipeline columns
// (2, 3, 4) belong to the electrical specialties only.
enum SysCodeColumn : int {
    kColName = 0,
    kColColor = 1,
    kColPipeInfo = 2,
    kColHorLaying = 3,
    kColVerLaying = 4,
    kColLineStyle = 5,
    kColLineString = 6,
    kColLineWidth = 7,
    kColAlpha = 8,
    kColRemark = 9,
    kSysCodeColumnCount = 10,
};
