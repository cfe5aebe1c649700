// The record that the fake module keeps, shared by its halves.
#pragma once

#include <cstdint>
#include <string>

#ifdef _WIN32
#define FAKE extern "C" __declspec(dllexport)
#else
#define FAKE extern "C" __attribute__((visibility("default")))
#endif

// Notes a call with its arguments as text, and gives back what it shall answer: the answer to "NAME#N" for the Nth call
// of a name, else the one to the name, else 0.
std::int32_t Record(const char* name, const std::string& arguments = {});

// A handle as a number.
std::string Number(const void* handle);
