// SPDX-License-Identifier: MIT
// Something for the headers to be compiled for.
int main()
{
    return 0;
}
