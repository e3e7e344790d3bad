# Folders, grid order, ranked search and recent documents.
