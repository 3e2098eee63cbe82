// What is said about mistakes.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tests {

// What an Error thrown by `work` says; "none" without one.
template <typename Error, typename Work>
std::string errorOf(const Work& work) {
  try {
    work();
  } catch (const Error& error) {
    return error.what();
  }
  return "none";
}

// Pairs of what is given and how the complaint about it begins.
using Complaints = std::vector<std::pair<std::string, std::string>>;

template <typename Complain>
void expectComplaints(const Complaints& cases, const Complain& complain) {
  for (const auto& [given, expected] : cases) {
    const std::string message = complain(given);
    EXPECT_TRUE(message.starts_with(expected)) << given << "\nis answered by: " << message;
  }
}

}  // namespace tests
