// What loading any library costs.
extern "C" __declspec(dllexport) int Nothing() { return 0; }
