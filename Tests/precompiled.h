// What most test cases include, compiled once for a program of many. A file includes what it uses all the
// same.
#ifndef VARNO_TESTS_PRECOMPILED_H
#define VARNO_TESTS_PRECOMPILED_H

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#endif
