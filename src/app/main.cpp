#include "app/zelqStartUp.h"

int main(int argc, char** argv) {
    return runBrowser(argc, argv);
}
