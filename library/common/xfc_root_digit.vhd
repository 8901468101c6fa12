-- One digit of a square root, the next one below the `known` highest: 1 where the remainder allows it. The state has,
-- from high to low, the remainder (known + 1 bits), the pairs of the operand's bits that were not looked at yet, and
-- the complement of the root's known bits, whose addition subtracts without inverters. With each digit the remainder
-- and the root take the bit more that two pending bits leave.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_root_digit is
  generic (digits  : positive;   -- of the whole root
           known   : positive;   -- of them, before this one
           enabled : natural);   -- 1: a register behind, 0: none
  port (sysclk, enable : in std_logic;
        state : in std_logic_vector(2 * digits downto 0);
        next_state : out std_logic_vector(2 * digits downto 0));
end xfc_root_digit;

architecture rtl of xfc_root_digit is
  constant wide_bits   : positive := known + 3;                  -- four remainders and the next pair
  constant pending_top : natural := 2 * digits - wide_bits;      -- highest bit behind them

  signal wide : std_logic_vector(wide_bits - 1 downto 0);
  signal complement : std_logic_vector(wide_bits - 1 downto 0);
  signal trial : std_logic_vector(wide_bits downto 0);
  signal digit : std_logic;
  signal remainder : std_logic_vector(wide_bits - 2 downto 0);
  signal next_state_d : std_logic_vector(2 * digits downto 0);
begin
  wide <= state(2 * digits downto pending_top + 1);
  complement <= '1' & state(known - 1 downto 0) & "11";
  -- Less four roots and one, modulo 2 ** wide_bits; the carry says that this is not negative.
  trial <= std_logic_vector(resize(unsigned(wide), wide_bits + 1) + unsigned(complement));
  digit <= trial(wide_bits);
  remainder <= trial(wide_bits - 2 downto 0) when digit = '1' else wide(wide_bits - 2 downto 0);
  next_state_d <= remainder & state(pending_top downto 0) & not digit;

  root_digit_0 : entity work.xfc_register generic map (2 * digits + 1, enabled)
    port map (sysclk, enable, next_state_d, next_state);
end rtl;
