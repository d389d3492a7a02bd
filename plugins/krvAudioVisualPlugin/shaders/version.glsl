#version 120
