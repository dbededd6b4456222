// SPDX-License-Identifier: BSD-3-Clause

/// Does nothing: the program around the precompiled headers of the tests.
int main()
{
}
