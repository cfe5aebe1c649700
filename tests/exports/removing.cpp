// A program that removes a shell link from its current folder: NAME.
#include "imaging/exports/lumbrix.h"

int main(int /*count*/, char** arguments) {
    constexpr int32_t NoFolder = 9999;
    RemoveShortcut(arguments[1], NoFolder);
    return 0;
}
