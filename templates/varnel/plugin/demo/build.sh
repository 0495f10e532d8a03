#!/bin/sh
echo "$@"
