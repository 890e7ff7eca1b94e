// SPDX-FileCopyrightText: 2026 The norvel developers
// SPDX-License-Identifier: MIT

#pragma once

/// All public headers of the library.
#include <norvel/global.h>

#include <norvel/attribute/RvARAttribute.h>
#include <norvel/attribute/RvARBeautyAttribute.h>
#include <norvel/attribute/RvARFilterAttribute.h>
#include <norvel/attribute/RvARFrameAttribute.h>
#include <norvel/attribute/RvARLabelAttribute.h>
#include <norvel/attribute/RvARLayerAttribute.h>
#include <norvel/attribute/RvARLiquifyAttribute.h>
#include <norvel/attribute/RvARMakeupAttribute.h>
#include <norvel/attribute/RvAttribute.h>
#include <norvel/attribute/RvAudioAttribute.h>
#include <norvel/attribute/RvDetectAttribute.h>
#include <norvel/attribute/RvEffectAttribute.h>
#include <norvel/attribute/RvMatteAttribute.h>
#include <norvel/attribute/RvMediaAttribute.h>
#include <norvel/attribute/RvReturnVlaue.h>
#include <norvel/timeline/RvAttributeUtility.h>
#include <norvel/timeline/RvTimeLineAttribute.h>
#include <norvel/timeline/RvTrackFactory.h>
#include <norvel/trace/RvEditorCacheData.h>
#include <norvel/trace/RvEditorTrace.h>
#include <norvel/widgets/canvas/CanvasViewer.h>
#include <norvel/widgets/canvas/CanvasViewerWidget.h>
#include <norvel/widgets/mask/LabPaintMaskView.h>
#include <norvel/widgets/mask/LabTouchMaskView.h>
#include <norvel/widgets/mask/RvTrackMaskWidget.h>
#include <norvel/widgets/player/QLabComparePlayer.h>
#include <norvel/widgets/player/QLabPlayer.h>
#include <norvel/widgets/recorder/RecorderWgt.h>
#include <norvel/widgets/systemstatus/systemstatus.h>
