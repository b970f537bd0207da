#include <iostream>
#include <string_view>

#include "Document.h"
#include "Workflows.h"

int main(int argc, char** argv) {
    const bool workflows = argc > 1 && std::string_view(argv[1]) == "workflows";
    std::cout << (workflows ? quillon::workflowsDocument() : quillon::protocolDocument());
    return 0;
}
