-- Shifts a signed value right by distance * unit bits and says whether a 1 went over the edge, here or before.
-- Several of these behind each other, the largest unit first, make a long shift with registers between.
library ieee;
use ieee.std_logic_1164.all;

entity xfc_shift_right is
  generic (width  : positive;    -- bits of the value
           levels : positive;    -- bits of the distance
           unit   : positive);   -- bits that the lowest bit of the distance stands for
  port (value       : in std_logic_vector(width - 1 downto 0);
        distance    : in std_logic_vector(levels - 1 downto 0);
        lost_before : in std_logic;
        shifted     : out std_logic_vector(width - 1 downto 0);
        lost        : out std_logic);
end xfc_shift_right;

architecture rtl of xfc_shift_right is
begin
  shift : process (value, distance, lost_before)
    variable current : std_logic_vector(width - 1 downto 0);
    variable sticky  : std_logic;
    variable amount  : positive;
  begin
    current := value;
    sticky := lost_before;
    for level in levels - 1 downto 0 loop
      amount := unit * 2 ** level;
      if distance(level) = '1' then
        for i in 0 to width - 1 loop
          if i < amount then
            sticky := sticky or current(i);
          end if;
        end loop;
        for i in 0 to width - 1 loop
          if i + amount < width then
            current(i) := current(i + amount);
          else
            current(i) := value(width - 1);
          end if;
        end loop;
      end if;
    end loop;
    shifted <= current;
    lost <= sticky;
  end process;
end rtl;
