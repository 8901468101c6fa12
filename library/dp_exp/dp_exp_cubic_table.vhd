-- r ** 3 / 6 for r = (index + 1/2) * 2 ** -24, units of 2 ** -62.
-- Made by make_tables.cpp. From the highest bits down: value (6 bits).
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity dp_exp_cubic_table is
  port (index : in std_logic_vector(5 downto 0);
        row   : out std_logic_vector(5 downto 0));
end dp_exp_cubic_table;

architecture rtl of dp_exp_cubic_table is
  type row_array is array (0 to 63) of std_logic_vector(5 downto 0);
  constant rows : row_array := (
    "000000",
    "000000",
    "000000",
    "000000",
    "000000",
    "000000",
    "000000",
    "000000",
    "000000",
    "000000",
    "000000",
    "000000",
    "000000",
    "000000",
    "000000",
    "000001",
    "000001",
    "000001",
    "000001",
    "000001",
    "000001",
    "000010",
    "000010",
    "000010",
    "000010",
    "000011",
    "000011",
    "000011",
    "000100",
    "000100",
    "000101",
    "000101",
    "000110",
    "000110",
    "000111",
    "000111",
    "001000",
    "001001",
    "001001",
    "001010",
    "001011",
    "001100",
    "001100",
    "001101",
    "001110",
    "001111",
    "010000",
    "010001",
    "010011",
    "010100",
    "010101",
    "010110",
    "011000",
    "011001",
    "011010",
    "011100",
    "011101",
    "011111",
    "100001",
    "100010",
    "100100",
    "100110",
    "101000",
    "101010");
begin
  row <= rows(to_integer(unsigned(index)));
end rtl;
