// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The headers that nearly every source of the windows includes, compiled once. Sources still name what they use.

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QString>
#include <QTimer>
#include <QVBoxLayout>
#include <QWidget>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>
