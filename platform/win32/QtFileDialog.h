#pragma once

// Installs the Qt file dialog as the face of CFileDialog.
void InstallQtFileDialog();
