#pragma once

// Specialty numbers: the first part of every index path ("3\12") and the major
// category ids of the attribute library, so the two always agree.
//   1 给排水   2 暖通   3 电气   4 消防   6 弱电
// 5 is not used by any specialty (a major category of the attribute library that
// holds no system codes); 0 is "no specialty".
enum ESysCodeSpecType {
    eSpecNone = 0,
    eSpecWaterSupply = 1, // 给排水
    eSpecHvac = 2, // 暖通
    eSpecElectric = 3, // 电气
    eSpecFire = 4, // 消防
    eSpecWeakElectric = 6 // 弱电
};
