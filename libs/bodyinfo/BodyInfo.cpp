// replaced by the body wrapper
