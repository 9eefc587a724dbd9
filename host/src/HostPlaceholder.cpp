// replaced as the host grows
