#include <iostream>

#include "Document.h"

int main() {
    std::cout << quillon::protocolDocument();
    return 0;
}
