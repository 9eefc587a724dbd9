// replaced by the table reader
