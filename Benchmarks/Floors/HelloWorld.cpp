// The C++ hello world that the tool's start-up is held against: the program
// every C++ course begins with, built by the same compiler with the same
// flags as the tool, so that the difference is what the tool itself costs.
#include <iostream>

int main() { std::cout << "Hello, world!\n"; }
