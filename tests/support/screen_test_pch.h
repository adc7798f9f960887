#pragma once

#include "support/test_pch.h"
#include "ui/widgets_pch.h"
