// replaced as the plug-in grows
