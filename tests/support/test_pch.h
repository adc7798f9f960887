#pragma once

#include "base/core_pch.h"

#include <QTest>
