#pragma once

#include <QKeyCombination>
#include <array>

#include "resources/zelqIds.h"

/// The accelerator table of the main window.
struct zelqAccelerator {
    QKeyCombination key;
    int command;
};

inline constexpr std::array kAccelerators{
    zelqAccelerator{QKeyCombination(Qt::Key_Slash), zelqId::kSelectAll},
    zelqAccelerator{Qt::CTRL | Qt::Key_Backslash, zelqId::kDeselectAll},
    zelqAccelerator{Qt::CTRL | Qt::Key_Insert, zelqId::kCopy},
};
