// Goes as soon as the first module of this folder is here.
