#pragma once

#include <QtGlobal>

#include <array>

/// The 16-bit outputs of a dimming curve at the 256 inputs 0, 256, ... 65280; rising.
using GammaAnchors = std::array<quint16, 256>;

const GammaAnchors& normalGammaAnchors();
const GammaAnchors& tungstenGammaAnchors();
