#include "qt/Program.h"

int main(int argc, char** argv) {
    return quillon::runProgram(argc, argv);
}
