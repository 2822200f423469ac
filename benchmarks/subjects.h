// SPDX-License-Identifier: MIT
#pragma once

class Suite;

// Each subject adds its pairs; its file says what they compare.
void addTickPairs(const Suite &suite);
void addRunningPadsPairs(const Suite &suite);
void addProfileLookupPairs(const Suite &suite);
void addProfileListPairs(const Suite &suite);
void addCardPairs(const Suite &suite);
void addSnapshotPairs(const Suite &suite);
void addConfigWindowPairs(const Suite &suite);
void addDesignerPairs(const Suite &suite);
void addOverlayLoadPairs(const Suite &suite);
void addOverlayMappingPairs(const Suite &suite);
void addActionWidgetPairs(const Suite &suite);
void addBridgeRefreshPairs(const Suite &suite);
