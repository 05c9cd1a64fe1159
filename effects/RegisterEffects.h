#pragma once

/// Makes every concrete effect known to the effect factory. To be called at start-up, before the
/// first show is read; a second call changes nothing.
void registerEffects();
