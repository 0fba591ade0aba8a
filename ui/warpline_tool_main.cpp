#include "ui/application.h"

wxIMPLEMENT_APP(warpline::Application);
