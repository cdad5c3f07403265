# What an installed Orrenby consists of.
