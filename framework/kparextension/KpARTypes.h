// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

namespace qkpar {

/// A parameter of the AR kernel: the key under which filter and beauty tracks keep a value.
///
/// The kernel knows many more parameters than have a name here; every `int` is a valid key.
enum KpARKernelParamFlag : int {
    KpARParamNone = 0,
    KpARParamSmoothSkin = 1,
    KpARParamWhitenSkin = 2,
    KpARParamSharpen = 3,
    KpARParamBrightEye = 4,
    KpARParamWhitenTeeth = 5,
    KpARParamSlimFace = 6,
    KpARParamEnlargeEye = 7,
    KpARParamSlimNose = 8,
    KpARParamLipShape = 9,
    KpARParamSlimHead = 10,
    KpARParamLongLeg = 11,
};

/// The gender whose coefficients a beauty track keeps apart.
enum KpARGender : int {
    KpARGenderUnknown = 0,
    KpARGenderMale = 1,
    KpARGenderFemale = 2,
};

/// What a beauty track is used as.
enum RvBeautyType : int {
    RvBeautyTypeBeauty = 0,
    RvBeautyTypeLiquify = 1,
    RvBeautyTypeBody = 2,
    RvBeautyTypeMakeup = 3,
};

} // namespace qkpar
